// The field of a colour on a screen, used by mouse and keys.

#include "doubles/desktop/DesktopProgram.h"
#include "doubles/ui/HexRowFixture.h"

#include <QClipboard>
#include <QGuiApplication>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class HexFieldDesktop : public HexRowTest {
  protected:
    HexFieldDesktop() {
        QGuiApplication::clipboard()->clear(QClipboard::Selection);
        window.setPosition(100, 100);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        stage.settle(200);
    }

    static void xdotool(const QStringList& arguments) {
        desktop::run("xdotool", "xdotool", arguments, QProcessEnvironment::systemEnvironment());
    }
    void clickField(double x, const QStringList& how) {
        const QPoint at =
            (field->mapToGlobal({x, field->height() / 2}) * window.devicePixelRatio()).toPoint();
        xdotool(QStringList{"mousemove", QString::number(at.x()), QString::number(at.y())} + how);
    }
    [[nodiscard]] QString selected() const { return field->property("selectedText").toString(); }
    [[nodiscard]] bool waitForSelected(const QString& text) {
        return QTest::qWaitFor([&] { return selected() == text; });
    }
    // What another program had highlighted would be gone.
    void expectNothingClaimed() {
        stage.settle(200);
        EXPECT_FALSE(QGuiApplication::clipboard()->ownsSelection());
    }
};

TEST_F(HexFieldDesktop, ADoubleClickSelectsAndLeavesTheSelectionOfOthers) {
    clickField(40, {"click", "--repeat", "2", "--delay", "60", "1"});
    EXPECT_TRUE(waitForSelected("112233")) << selected().toStdString();
    expectNothingClaimed();
}

TEST_F(HexFieldDesktop, ADragSelectsAndLeavesTheSelectionOfOthers) {
    clickField(8, {"mousedown", "1"});
    clickField(60, {});
    clickField(115, {"mouseup", "1"});
    EXPECT_TRUE(waitForSelected("#112233")) << selected().toStdString();
    expectNothingClaimed();
}

TEST_F(HexFieldDesktop, KeysSelectAndLeaveTheSelectionOfOthers) {
    clickField(115, {"click", "1"});
    EXPECT_TRUE(QTest::qWaitFor([&] { return field->hasActiveFocus(); }));
    xdotool({"key", "End", "shift+Left", "shift+Left"});
    EXPECT_TRUE(waitForSelected("33")) << selected().toStdString();
    xdotool({"key", "ctrl+a"});
    EXPECT_TRUE(waitForSelected("#112233")) << selected().toStdString();
    xdotool({"key", "Home", "shift+End"});
    EXPECT_TRUE(waitForSelected("#112233")) << selected().toStdString();
    expectNothingClaimed();
}

} // namespace
} // namespace vorq
