#include "platform/GlobalHotKeys.h" // its signals are generated
