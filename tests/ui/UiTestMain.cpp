// GoogleTest's entry point with pages around it, drawn by the processor and without a screen.

#include "ui/UiContext.h"

#include <QApplication>

#include <gmock/gmock.h>

#if __has_feature(address_sanitizer)
// Qt Quick keeps a cache of pictures for the whole process and never gives it back. To tell it from
// leaks of our own, the calls through Qt, which has no frame pointers, must be followed.
extern "C" const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0";
}
extern "C" const char* __lsan_default_suppressions() {
    return "leak:QQuickPixmap::load\nleak:QQuickBorderImage::updatePaintNode\n";
}
#endif

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    vorq::prepareUi();
    const int result = RUN_ALL_TESTS();
    for (int round = 0; round < 100; ++round)
        QCoreApplication::processEvents();
    return result;
}
