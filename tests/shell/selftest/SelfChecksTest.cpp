// What each check says where something is amiss.

#include "doubles/shell/SelfTestFixture.h"
#include "platform/copying/Pasteboard.h"

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class SelfChecksTest : public SelfTestFixture {
  protected:
    [[nodiscard]] std::string told(const QString& id) const {
        const SelfCheck& result = resultOf(id);
        return (stateOf(id) + u": "_s + result.sentence.plain() + u" | "_s + result.advice.plain())
            .toStdString();
    }
};

TEST_F(SelfChecksTest, WithoutADesktopItSaysWhatWorksInATerminal) {
    const PortSupport none = std::unexpected(u"There is no desktop that shows windows."_s);
    m_session.kind.clear();
    m_window.support = none;
    m_privacy.support = none;
    m_accessibility.trusted = false;
    runTest(50ms);
    EXPECT_THAT(told(u"session"_s), HasSubstr("only vorq ask and the library work"));
    for (const char* id :
         {"session", "accessibility", "programs", "portal", "window", "capture-accessibility",
          "capture-primary", "capture-copy", "replacement", "hot-keys"})
        EXPECT_EQ(stateOf(id), u"skipped") << id;
    EXPECT_THAT(failures(), IsEmpty());
}

TEST_F(SelfChecksTest, WhatASessionLacksIsAWarning) {
    m_session.kind = u"Wayland"_s;
    m_limits = {u"Wayland lets no program press keys in another."_s};
    runTest();
    EXPECT_EQ(told(u"session"_s), "warning: The session is Wayland. In it: Wayland lets no program "
                                  "press keys in another. | ");
    EXPECT_TRUE(m_test->hasPassed());
}

TEST_F(SelfChecksTest, AccessibilityThatIsOffFails) {
    m_accessibility.trusted = false;
    runTest(50ms);
    EXPECT_THAT(told(u"accessibility"_s), HasSubstr("failed: Accessibility is off"));
    EXPECT_THAT(told(u"accessibility"_s), HasSubstr("vorq enable-accessibility"));
    for (const char* id : {"programs", "capture-accessibility", "replacement"})
        EXPECT_EQ(stateOf(id), u"skipped") << id;
}

TEST_F(SelfChecksTest, ProgramsToBeStartedAgainAreNamedToTheUserAlone) {
    m_privacy.programs = {u"FeatherPad"_s, u"Okular"_s};
    runTest();
    EXPECT_THAT(told(u"programs"_s), HasSubstr("turned on: 2."));
    EXPECT_THAT(told(u"programs"_s), Not(HasSubstr("Okular")));
    EXPECT_EQ(resultOf(u"programs"_s).details, m_privacy.programs);
}

TEST_F(SelfChecksTest, AMissingPortalIsAWarning) {
    m_session.portalSupport = std::unexpected(u"No desktop portal answers."_s);
    runTest();
    EXPECT_THAT(told(u"portal"_s), HasSubstr("warning: No desktop portal answers."));
    EXPECT_THAT(told(u"portal"_s), HasSubstr("xdg-desktop-portal"));
}

TEST_F(SelfChecksTest, AMissingTrayIsAWarning) {
    m_tray = std::unexpected(u"This desktop has no tray."_s);
    runTest();
    EXPECT_THAT(told(u"tray"_s), HasSubstr("warning: This desktop has no tray."));
}

TEST_F(SelfChecksTest, NotesThatCannotBeKeptFail) {
    m_notesApplication.refusal = u"Gnote is not installed."_s;
    runTest();
    EXPECT_THAT(told(u"notes"_s),
                HasSubstr("failed: Notes cannot be kept. Gnote is not installed."));
}

TEST_F(SelfChecksTest, ABackendThatIsDownFailsWithTheWayToStartIt) {
    m_isBackendDown = true;
    runTest();
    EXPECT_THAT(told(u"backend"_s),
                HasSubstr("failed: The backend on this computer does not answer."));
    EXPECT_THAT(told(u"backend"_s), HasSubstr("vorq enable-backend"));
    EXPECT_EQ(stateOf(u"provider"_s), u"skipped");
}

TEST_F(SelfChecksTest, ABackendThatTellsNothingOfItselfAnswers) {
    m_backendStatus = "<html>";
    runTest();
    EXPECT_EQ(stateOf(u"backend"_s), u"ok");
    EXPECT_EQ(stateOf(u"provider"_s), u"ok");
}

TEST_F(SelfChecksTest, WithoutALanguageModelThereIsAWarningAndNobodyIsAsked) {
    m_backendStatus = R"({"service":"vorq-gateway","replies":"embedded"})";
    runTest();
    EXPECT_THAT(told(u"provider"_s), HasSubstr("warning: No language model is connected"));
    EXPECT_EQ(exchange().path(), u"/status");
}

TEST_F(SelfChecksTest, ALanguageModelThatFailsIsToldWithoutItsWords) {
    m_promptStatus = 502;
    runTest();
    EXPECT_THAT(told(u"provider"_s), HasSubstr("failed: The language model does not answer."));
    EXPECT_FALSE(resultOf(u"provider"_s).details.isEmpty());
}

TEST_F(SelfChecksTest, WhoIsNotSignedInIsToldHow) {
    state().account().signOut();
    m_clock.settle();
    runTest();
    EXPECT_THAT(told(u"account"_s), HasSubstr("failed: Nobody is signed in."));
    EXPECT_THAT(told(u"account"_s), HasSubstr("vorq-gateway handoff"));
    EXPECT_EQ(stateOf(u"provider"_s), u"skipped");
}

TEST_F(SelfChecksTest, AWindowThatDoesNotOpenFails) {
    m_window.fails = true;
    runTest();
    EXPECT_THAT(failures(), ElementsAre(u"window"_s));
    EXPECT_EQ(stateOf(u"hot-keys"_s), u"skipped");
}

TEST_F(SelfChecksTest, AWindowThatGetsNoKeyboardIsAWarningAndNoKeyIsPressed) {
    m_workspace.holdBackActivations();
    int pressed = 0;
    m_poster.onPress = [&](const HotKeyChord&) { ++pressed; };
    runTest(50ms);
    EXPECT_EQ(stateOf(u"window"_s), u"warning");
    EXPECT_EQ(stateOf(u"capture-copy"_s), u"skipped");
    EXPECT_EQ(stateOf(u"hot-keys"_s), u"skipped");
    EXPECT_EQ(pressed, 0);
    EXPECT_EQ(m_copyShortcut.copies, 0);
}

TEST_F(SelfChecksTest, TextThatAccessibilityDoesNotTellFails) {
    m_accessibility.focusedName.reset();
    runTest(50ms);
    EXPECT_THAT(told(u"capture-accessibility"_s), HasSubstr("failed: The test window's text"));
}

TEST_F(SelfChecksTest, TextThatIsNotHandedOutFails) {
    m_window.onOpen = [this, former = m_window.onOpen] {
        former();
        m_primary.owner = editor;
    };
    runTest(50ms);
    EXPECT_THAT(failures(), ElementsAre(u"capture-primary"_s));
}

TEST_F(SelfChecksTest, TextThatIsNotCopiedFails) {
    m_copyShortcut.text = u"something else"_s;
    runTest();
    EXPECT_THAT(failures(), ElementsAre(u"capture-copy"_s));
}

TEST_F(SelfChecksTest, WhereNoKeysCanBePressedItSaysWhatWasNotTested) {
    m_poster.support = std::unexpected(u"The X server lets no program press keys."_s);
    runTest();
    EXPECT_EQ(stateOf(u"hot-keys"_s), u"skipped");
    EXPECT_THAT(told(u"hot-keys"_s), HasSubstr("registered, but could not be pressed"));
    EXPECT_THAT(told(u"hot-keys"_s), HasSubstr("lets no program press keys"));
}

TEST_F(SelfChecksTest, AKeyThatAnotherProgramHoldsFailsWithTheCommandToBind) {
    m_keysOfDesktop.failures['A'] = {.status = 10, .isTaken = true};
    m_hotKeys.registerHotKeys();
    runTest();
    EXPECT_EQ(told(u"hot-keys"_s), "failed: Taken by another program: Super+Shift+A. | Bind keys "
                                   "of your desktop to: vorq summon");
}

TEST_F(SelfChecksTest, KeysOfAnotherVorqAreNotTested) {
    m_areHotKeysOfAnother = true;
    m_keysOfDesktop.failures['A'] = {.status = 10, .isTaken = true};
    m_hotKeys.registerHotKeys();
    makeAnew();
    runTest();
    EXPECT_EQ(told(u"hot-keys"_s), "skipped: The Vorq that runs has them. | ");
}

TEST_F(SelfChecksTest, ADesktopThatKeepsItsKeysIsAWarning) {
    m_keysOfDesktop.handlerFailure = HotKeyFailure{.status = -1};
    m_hotKeys.registerHotKeys();
    runTest();
    EXPECT_THAT(told(u"hot-keys"_s),
                HasSubstr("warning: This desktop keeps global keys to itself."));
    EXPECT_THAT(told(u"hot-keys"_s),
                HasSubstr("vorq summon, vorq note, vorq push-note, vorq clear"));
}

TEST_F(SelfChecksTest, AKeyThatDoesNotArriveFails) {
    m_poster.onPress = [this](const HotKeyChord& chord) {
        for (const HotKeyEntry& entry : hotKeyTable)
            if (entry.chord == chord && chord.letter != 'S') m_keysOfDesktop.press(entry.id);
    };
    runTest(20ms);
    EXPECT_THAT(told(u"hot-keys"_s), HasSubstr("failed: Pressed, but did not reach Vorq: "
                                               "Super+Shift+S."));
}

} // namespace
} // namespace vorq
