#include "shell/StatusItem.h" // its signals are generated
