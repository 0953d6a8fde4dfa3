// The commands of the menu of the built program, and the keys beside them.

#include "doubles/desktop/MenuProgram.h"
#include "platform/linux/x11/X11HotKeys.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class MenuCommandsTest : public MenuProgramTest {
  protected:
    // Notes go to a folder, whatever applications there are.
    [[nodiscard]] QByteArray settings() const {
        return "{\"vorq.notes.application\": \"folder\", \"vorq.notes.folder\": \"" +
               notesFolder().toUtf8() + "\"}";
    }
    [[nodiscard]] QString notesFolder() const { return m_session.home() + "/my-notes"; }
    [[nodiscard]] QStringList notes() const { return QDir(notesFolder()).entryList(QDir::Files); }

    [[nodiscard]] bool isPanelShown() const {
        for (const DesktopSession::Window window : m_session.windows())
            if (m_session.geometry(window).size() == QSize(440, 750)) return true;
        return false;
    }
    void waitForPanel(bool shown) const {
        DesktopSession::waitUntil(shown ? "the panel" : "the panel to go",
                                  [&] { return isPanelShown() == shown; });
    }
    void waitForGreeting() const {
        DesktopSession::waitUntil("the greeting",
                                  [this] { return shows("Vorq: Hello 👋, Vorq here…"); });
    }
    [[nodiscard]] std::string texts() const { return entries().join('\n').toStdString(); }
};

constexpr HotKeyChord panelChord{'A', 0, HotKeyModifier::command + HotKeyModifier::shift};

TEST_F(MenuCommandsTest, ToggleShowsThePanelAndHidesIt) {
    startInTray();
    for (const bool shown : {true, false}) {
        openMenu();
        choose("Toggle Vorq");
        waitForPanel(shown);
    }
}

TEST_F(MenuCommandsTest, KeysStandBesideWhatTheyDoAndNothingThatDoesNothingIsThere) {
    startInTray();
    openMenu();
    EXPECT_THAT(texts(), HasSubstr("Toggle Vorq\tSuper+Shift+A"));
    EXPECT_THAT(texts(), HasSubstr("Clear Chat\tSuper+Shift+T"));
    EXPECT_THAT(texts(), HasSubstr("Save Highlight as Note\tSuper+Shift+S"));
    EXPECT_THAT(texts(), HasSubstr("Push Note Draft\tSuper+Shift+P"));
    EXPECT_THAT(texts(), Not(HasSubstr("Held Text")));
    (void)keep("menu-keys");
}

TEST_F(MenuCommandsTest, AKeyThatBecomesFreeIsTakenAsTheMenuOpens) {
    auto other = std::make_unique<X11HotKeys>();
    ASSERT_TRUE(other->installEventHandler());
    ASSERT_TRUE(other->registerHotKey(panelChord, {1, 1}));
    DesktopProgram& vorq = startInTray();
    openMenu();
    EXPECT_THAT(texts(), HasSubstr("Super+Shift+A is taken by another program."));
    EXPECT_THAT(texts(), Not(HasSubstr("Toggle Vorq\t")));
    EXPECT_GE(picture().contrast(placeOf("Super+Shift+A is taken")), 4.5);
    (void)keep("menu-notice");
    closeMenu();
    other.reset();
    openMenu();
    EXPECT_THAT(texts(), Not(HasSubstr("is taken by another program")));
    EXPECT_THAT(texts(), HasSubstr("Toggle Vorq\tSuper+Shift+A"));
    closeMenu();
    m_session.key({"super+shift+a"});
    waitFor(vorq, "Vorq ⌘⇧A: ");
}

TEST_F(MenuCommandsTest, AKeyThatBecomesFreeIsTakenByItselfAfterAWhile) {
    auto other = std::make_unique<X11HotKeys>();
    ASSERT_TRUE(other->installEventHandler());
    ASSERT_TRUE(other->registerHotKey(panelChord, {1, 1}));
    DesktopProgram& vorq = startInTray();
    other.reset();
    waitFor(vorq, "Vorq registered Command+Shift+A hotkey.");
    m_session.key({"super+shift+a"});
    waitFor(vorq, "Vorq ⌘⇧A: ");
}

TEST_F(MenuCommandsTest, AChatIsSavedToNotes) {
    startInTray(settings());
    openMenu();
    EXPECT_FALSE(entry("Save Chat to Notes")->isEnabled);
    choose("Toggle Vorq");
    waitForGreeting();
    openMenu();
    choose("Save Chat to Notes");
    DesktopSession::waitUntil("the note", [this] { return !notes().isEmpty(); });
    EXPECT_EQ(runToEnd({"save-chat"}).status, 0);
    DesktopSession::waitUntil("another note", [this] { return notes().size() == 2; });
}

TEST_F(MenuCommandsTest, AChatIsSavedOnlyByTheProgramThatRuns) {
    const Ended ended = runToEnd({"save-chat"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, HasSubstr("Vorq is not running."));
}

TEST_F(MenuCommandsTest, WhyAChatWasNotSavedIsSaid) {
    m_session.write("my-notes", "a file where the folder should be");
    startInTray(settings());
    openMenu();
    choose("Toggle Vorq");
    waitForGreeting();
    openMenu();
    choose("Save Chat to Notes");
    DesktopSession::waitUntil("the failure", [this] { return shows("Couldn’t save to Notes."); });
    EXPECT_TRUE(shows(notesFolder()));
    (void)keep("alert-notes");
}

TEST_F(MenuCommandsTest, WhoDeletesVorqIsToldWhatGoes) {
    startInTray();
    openMenu();
    choose("Delete Vorq");
    DesktopSession::waitUntil("the question", [this] { return shows("Delete Vorq?"); });
    EXPECT_TRUE(shows("This moves Vorq to the Trash and quits. Vorq won’t appear in Applications "
                      "anymore — reinstall anytime from the website."));
    EXPECT_TRUE(shows("Your saved notes and chats"));
    (void)keep("alert-delete");
}

} // namespace
} // namespace vorq::desktop
