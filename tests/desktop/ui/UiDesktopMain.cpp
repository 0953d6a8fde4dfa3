// Pages as a graphics card draws them. The desktop must be there before Qt connects to it.

#include "doubles/desktop/DesktopSession.h"
#include "ui/bindings/UiContext.h"

#include <QGuiApplication>

#include <gmock/gmock.h>

#include <iostream>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    try {
        const vorq::desktop::DesktopSession session;
        qputenv("QT_QPA_PLATFORM", "xcb");
        // Pixels to a point.
        qputenv("QT_SCALE_FACTOR", argc > 1 ? argv[1] : "1");
        qputenv("LIBGL_ALWAYS_SOFTWARE", "1");
        qputenv("QSG_RHI_BACKEND", "opengl");
        const QGuiApplication application(argc, argv);
        vorq::prepareUi();
        return RUN_ALL_TESTS();
    } catch (const std::exception& problem) {
        std::cerr << problem.what() << '\n';
        return 1;
    }
}
