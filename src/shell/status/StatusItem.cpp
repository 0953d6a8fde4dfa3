#include "shell/status/StatusItem.h" // its signals are generated
