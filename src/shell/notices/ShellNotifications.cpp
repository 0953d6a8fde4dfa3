#include "shell/notices/ShellNotifications.h" // its signals are generated
