// GoogleTest's entry point with pages around it, drawn by the processor and without a screen.

#include "ui/UiContext.h"

#include <QApplication>

#include <gmock/gmock.h>

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
