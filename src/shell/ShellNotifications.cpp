#include "shell/ShellNotifications.h" // its signals are generated
