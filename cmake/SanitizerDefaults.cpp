// Part of every program that is built with the address sanitizer: how leaks are told from what
// lives as long as the process.

#include <dlfcn.h>

// Libraries stay loaded. What a plugin of the platform or of the graphics keeps for the whole
// process would otherwise look lost, and its functions would have no names in a report.
extern "C" __attribute__((visibility("default"))) int dlclose(void*) {
    return 0;
}

// Leaks of libraries, by the function that has them. To be added to only with the reason:
// - Qt Quick keeps its pictures in a cache for the whole process and never gives them back.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:QQuickPixmap::load\nleak:QQuickBorderImage::updatePaintNode\n";
}
