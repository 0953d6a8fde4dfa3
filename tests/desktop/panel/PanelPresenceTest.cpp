// When the built program's panel is on the screen, and who has the keyboard then.

#include "doubles/desktop/PanelPresenceFixture.h"

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

using testing::SizeIs;
using Window = DesktopSession::Window;

TEST_F(PanelPresenceTest, ClosedByTheWindowManagerItComesUpAgain) {
    vorq.start();
    for (int time = 0; time < 2; ++time) {
        openPanel();
        session.key({"alt+F4"});
        vorq.waitForNoPanel();
        DesktopSession::waitUntil("the source",
                                  [&] { return session.activeWindow() == m_source.window; });
    }
    selectAll();
    vorq.pressHotKey();
    vorq.waitForPanel();
    EXPECT_THAT(vorq.waitForReply(3), SizeIs(3));
}

TEST_F(PanelPresenceTest, HiddenWithAllWindowsNothingIsCapturedUnseen) {
    vorq.start();
    openPanel();
    const Window panel = vorq.panel();
    session.key({"super+d"});
    DesktopSession::waitUntil("the panel to go", [&] { return !isOnScreen(panel); });
    letSettle();
    vorq.pressHotKey();
    DesktopSession::waitUntil("the panel on the screen",
                              [&] { return vorq.panel() != 0 && isOnScreen(vorq.panel()); });
    letSettle();
    EXPECT_TRUE(vorq.panel() != 0 && isOnScreen(vorq.panel()));
}

TEST_F(PanelPresenceTest, MinimisedItComesUpAtTheNextPress) {
    vorq.start();
    openPanel();
    const Window panel = vorq.panel();
    xdotool({"windowminimize", QString::number(panel)});
    DesktopSession::waitUntil("the panel to go", [&] { return !isOnScreen(panel); });
    letSettle();
    vorq.pressHotKey();
    vorq.waitForPanel();
    EXPECT_TRUE(isOnScreen(vorq.panel()));
}

TEST_F(PanelPresenceTest, AClickCountsWhereTheWindowManagerHasPutThePanel) {
    vorq.start();
    openPanel();
    const QPoint formerly = session.geometry(vorq.panel()).center();
    xdotool({"windowmove", QString::number(vorq.panel()), "800", "20"});
    DesktopSession::waitUntil("the panel elsewhere",
                              [&] { return session.geometry(vorq.panel()).left() > 700; });
    session.click(session.geometry(vorq.panel()).center());
    expectStays("the click was on the panel");
    session.click(formerly);
    vorq.waitForNoPanel();
}

TEST_F(PanelPresenceTest, TheKeyOverAnOpenPanelTakesTheKeyboardAsTheFirstDoes) {
    vorq.start();
    openPanel();
    selectAll();
    EXPECT_NE(vorq.panel(), 0U);
    vorq.pressHotKey();
    vorq.waitForPanel();
    session.type("more");
    DesktopSession::waitUntil("the draft", [&] { return draft() == "more"; });
    EXPECT_EQ(session.selection("primary"), material.toUtf8()) << "nothing was overwritten";
}

TEST_F(PanelPresenceTest, EscapeClosesTheInnermostThingFirst) {
    vorq.start();
    openPanel();
    EXPECT_TRUE(vorq.press("Add files or notes"));
    DesktopSession::waitUntil("the tray", [&] { return isShowing("popup menu"); });
    EXPECT_TRUE(vorq.press("Attach from Notes"));
    const auto shows = [&](const QString& name) {
        for (const AccessibleNode& node : vorq.controls())
            if (node.name == name && node.isShowing) return true;
        return false;
    };
    DesktopSession::waitUntil("the notes", [&] { return shows("Back"); });
    session.key({"Escape"});
    DesktopSession::waitUntil("the sources", [&] { return shows("Attach from Notes"); });
    EXPECT_NE(vorq.panel(), 0U);
    session.key({"Escape"});
    DesktopSession::waitUntil("no tray", [&] { return !shows("Attach from Notes"); });
    expectStays("the tray was open");
    session.type("typed");
    DesktopSession::waitUntil("the draft", [&] { return draft() == "typed"; });

    rightClick(prompt());
    waitForMenu();
    session.key({"Escape"});
    waitForMenu(false);
    expectStays("the menu was open");
    session.key({"Escape"});
    vorq.waitForNoPanel();
}

TEST_F(PanelPresenceTest, AClickThatOnlyClosesItsMenuLeavesItUp) {
    vorq.start();
    openPanel();
    for (int time = 0; time < 5; ++time) {
        rightClick(prompt());
        waitForMenu();
        session.click(besideAll());
        waitForMenu(false);
        expectStays("the click was the menu's");
        if (vorq.panel() == 0) return;
    }
    expectClickHides();
}

TEST_F(PanelPresenceTest, AClickIntoItCountsWhereItWasThoughThePointerHasGoneOn) {
    vorq.start();
    openPanel();
    {
        const Stopped busy(vorq.program().process());
        session.click(prompt());
        xdotool({"mousemove", "900", "400"});
    }
    expectStays("the click was on the panel");
    session.type("typed");
    DesktopSession::waitUntil("the draft", [&] { return draft() == "typed"; });
    expectClickHides();
}

TEST_F(PanelPresenceTest, TheHotKeyLeavesItsFileDialogAlone) {
    vorq.start();
    openPanel();
    EXPECT_TRUE(vorq.press("Add files or notes"));
    DesktopSession::waitUntil("the tray", [&] { return isShowing("popup menu"); });
    EXPECT_TRUE(vorq.press("Add study files"));
    const Window panel = vorq.panel();
    DesktopSession::waitUntil("the dialog", [&] {
        const Window active = session.activeWindow();
        return active != panel && session.processOf(active) == vorq.program().process();
    });
    const Window dialog = session.activeWindow();
    vorq.pressHotKey();
    letSettle(1000);
    EXPECT_TRUE(isOnScreen(panel));
    EXPECT_EQ(session.activeWindow(), dialog);
    session.key({"Escape"});
    DesktopSession::waitUntil("the panel", [&] { return session.activeWindow() == panel; });
    expectClickHides();
}

TEST_F(PanelPresenceTest, WhatIsTypedRightAfterTheFirstPressIsForTheDraft) {
    vorq.start();
    session.activate(m_source.window);
    session.key({"ctrl+End"});
    xdotool({"key", "super+shift+a", "sleep", "0.15", "type", "--delay", "25", "early letters"});
    vorq.waitForPanel();
    DesktopSession::waitUntil("the draft", [&] { return draft().endsWith("letters"); });
    EXPECT_EQ(draft(), "early letters");
}

using PanelDropTest = PanelPresenceTest;

TEST_F(PanelDropTest, AFileDraggedHereFromElsewhereIsAttached) {
    vorq.start();
    const Window source = openDragSource({session.write("silt.txt", "Silt settles.")});
    openPanel();
    const QPoint from = session.geometry(source).center();
    dragSlowly(from, session.geometry(vorq.panel()).center());
    const auto hasClip = [&] {
        for (const AccessibleNode& node : vorq.controls())
            if (node.name.contains("silt.txt") && node.isShowing) return true;
        return false;
    };
    DesktopSession::waitUntil("the clip", hasClip);
    EXPECT_NE(vorq.panel(), 0U);
    session.click(from);
    vorq.waitForNoPanel();
}

TEST_F(PanelDropTest, ADragBetweenOthersLeavesItUpAndAPressThatDragsNothingDoesNot) {
    vorq.start();
    const Window source = openDragSource({session.write("silt.txt", "Silt settles.")});
    openPanel();
    const QPoint from = session.geometry(source).center();
    dragSlowly(from, besideAll());
    expectStays("something was dragged");
    session.drag(session.geometry(m_source.window).center(), besideAll());
    vorq.waitForNoPanel();
}

// The menu of the status item, which a tray shows as a window of ours.
class PanelTrayTest : public PanelPresenceTest {
  protected:
    PanelTrayTest() {
        const QString config = session.write(
            "tint2rc", "panel_items = S\npanel_size = 100% 40\nsystray_padding = 4 4 4\n"
                       "panel_position = bottom left horizontal\n");
        m_started.push_back(&session.start("tint2", "tint2", {"-c", config}));
        vorq.start();
        DesktopSession::waitUntil("the mark in the tray",
                                  [&] { return placeOfMark() != QPoint(); });
    }

    // The middle of what has the colour of the mark.
    [[nodiscard]] QPoint placeOfMark() const {
        const QByteArray screen =
            run("import", "imagemagick",
                {"-window", "root", "-crop", "1280x40+0+860", "-depth", "8", "rgb:-"},
                session.environment());
        const qsizetype found = screen.indexOf("\x5b\x78\xfb");
        if (found < 0) return {};
        return {static_cast<int>(found / 3 % 1280), 860 + static_cast<int>(found / 3 / 1280)};
    }

    void openStatusMenu() {
        session.click(placeOfMark());
        waitForMenu();
    }
};

TEST_F(PanelTrayTest, AClickThatOnlyClosesTheMenuOfTheTrayLeavesItUp) {
    openPanel();
    for (int time = 0; time < 3; ++time) {
        openStatusMenu();
        session.click(besideAll());
        waitForMenu(false);
        expectStays("the click was the menu's");
        if (vorq.panel() == 0) return;
    }
    expectClickHides();
}

TEST_F(PanelTrayTest, ASignInByALinkTakesNoKeys) {
    session.activate(m_source.window);
    session.key({"ctrl+End"});
    const QByteArray link =
        run(VORQ_GATEWAY_PROGRAM, "", {"handoff"}, session.environment()).trimmed();
    DesktopProgram& opened = session.start(VORQ_PROGRAM, "", {"open", QString::fromUtf8(link)});
    const QString typed = " and what is typed meanwhile stays with the editor";
    xdotool({"type", "--delay", "40", "--", typed});
    DesktopSession::waitUntil("the sign-in", [&] { return !opened.isRunning(); });
    EXPECT_TRUE(opened.output().contains("Signed in as ")) << opened.output().toStdString();
    EXPECT_FALSE(isMenuOpen());
    highlight(session, [&] { session.key({"ctrl+Home", "ctrl+a"}); }, (material + typed).toUtf8());
}

} // namespace
} // namespace vorq::desktop
