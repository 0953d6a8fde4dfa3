// These tests draw on a desktop of their own, which must be there before Qt connects to it.

#include "doubles/desktop/DesktopSession.h"
#include "doubles/desktop/PanelDesktopFixture.h"

#include <QApplication>

#include <gmock/gmock.h>

#include <iostream>

namespace {

vorq::desktop::DesktopSession* theSession = nullptr;

} // namespace

namespace vorq {

desktop::DesktopSession& desktopSession() {
    return *theSession;
}

} // namespace vorq

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    try {
        vorq::desktop::DesktopSession session({.screen = {1920, 1080}});
        theSession = &session;
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("QT_QUICK_BACKEND", "software");
        // Pixels to a point: one number for all screens, or "name=number;…". 1 if not told.
        const QByteArray scale = argc > 1 ? argv[1] : "1";
        qputenv(scale.contains('=') ? "QT_SCREEN_SCALE_FACTORS" : "QT_SCALE_FACTOR", scale);
        const QApplication application(argc, argv);
        return RUN_ALL_TESTS();
    } catch (const std::exception& problem) {
        std::cerr << problem.what() << '\n';
        return 1;
    }
}
