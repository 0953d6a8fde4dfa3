// GoogleTest's entry point with pages around it, drawn by the processor and without a screen.

#include "ui/bindings/UiContext.h"

#include <QApplication>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

#if __has_feature(address_sanitizer)
// To tell leaks of Qt Quick from our own, the calls through it, which has no frame pointers, must
// be followed, as far as its own functions reach: each call costs. A program with graphics would
// take minutes to start that way.
extern "C" const char* __asan_default_options() {
    return "fast_unwind_on_malloc=0:malloc_context_size=12";
}
#endif

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    qSetMessagePattern(u"%{message}"_s); // as the program has it
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    vorq::prepareUi();
    const int result = RUN_ALL_TESTS();
    for (int round = 0; round < 100; ++round)
        QCoreApplication::processEvents();
    return result;
}
