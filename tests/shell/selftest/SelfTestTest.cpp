#include "doubles/shell/SelfTestFixture.h"
#include "shell/selftest/TestStage.h"

#include <QSignalSpy>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

using SelfTestTest = SelfTestFixture;

TEST_F(SelfTestTest, WhereEverythingWorksNothingIsAmiss) {
    runTest();
    EXPECT_TRUE(m_test->hasPassed());
    QStringList ids;
    for (const SelfCheck& result : m_test->results()) {
        ids += result.id;
        EXPECT_EQ(result.state, SelfCheckState::Ok)
            << result.id.toStdString() << ": " << result.sentence.plain().toStdString();
        EXPECT_TRUE(result.advice.isEmpty());
    }
    EXPECT_EQ(ids.join(u' '), u"session accessibility programs portal tray notes backend account "
                              "provider window capture-accessibility capture-primary capture-copy "
                              "replacement hot-keys"_s);
}

TEST_F(SelfTestTest, ResultsAreToldOneByOne) {
    const QSignalSpy checked(m_test.get(), &SelfTest::checked);
    const QSignalSpy finished(m_test.get(), &SelfTest::finished);
    runTest();
    EXPECT_EQ(std::size_t(checked.count()), m_test->count());
    EXPECT_EQ(finished.count(), 1);
}

TEST_F(SelfTestTest, ASecondStartWhileItRunsDoesNothing) {
    m_test->start();
    const QSignalSpy started(m_test.get(), &SelfTest::started);
    runTest();
    EXPECT_EQ(started.count(), 0);
    EXPECT_EQ(m_test->results().size(), m_test->count());
}

TEST_F(SelfTestTest, WhatWasInFrontIsInFrontAgain) {
    runTest();
    EXPECT_EQ(m_workspace.frontmostProcess(), editor);
    EXPECT_FALSE(m_window.isOpen);
}

TEST_F(SelfTestTest, AUserWhoWentOnIsNotPulledBack) {
    m_poster.onPress = [this](const HotKeyChord&) { m_workspace.bringToFront(9); };
    runTest(50ms);
    EXPECT_EQ(m_workspace.frontmostProcess(), 9);
}

TEST_F(SelfTestTest, WhatWasHighlightedIsHandedOutAgain) {
    const PasteboardContents users = pasteboardText(u"of the user"_s);
    m_highlight.writeAs(editor, users);
    runTest();
    EXPECT_EQ(m_highlight.held, users);
    EXPECT_EQ(stateOf(u"capture-primary"_s), u"ok");
}

TEST_F(SelfTestTest, WhatTheUserHighlightsMeanwhileStays) {
    m_highlight.writeAs(editor, pasteboardText(u"of the user"_s));
    const PasteboardContents later = pasteboardText(u"later"_s);
    m_poster.onPress = [&](const HotKeyChord&) { m_highlight.writeAs(editor, later); };
    runTest(50ms);
    EXPECT_EQ(m_highlight.held, later);
}

TEST_F(SelfTestTest, AHighlightThatCannotBeHadIsLeftAlone) {
    m_highlight.refusal = u"marked as a secret"_s;
    runTest();
    EXPECT_EQ(m_window.handedOut, TestWindow::HandsOut::No);
    EXPECT_EQ(stateOf(u"capture-primary"_s), u"skipped");
    EXPECT_THAT(failures(), IsEmpty());
}

TEST_F(SelfTestTest, AProcessThatEndsTakesNobodysHighlightOrClipboard) {
    m_staysAfterwards = false;
    m_highlight.writeAs(editor, pasteboardText(u"of the user"_s));
    m_clipboard.writeAs(editor, pasteboardText(u"of the user"_s));
    makeAnew();
    runTest();
    EXPECT_EQ(m_window.handedOut, TestWindow::HandsOut::No);
    EXPECT_EQ(m_copyShortcut.copies, 0);
    for (const char* id : {"capture-primary", "capture-copy", "replacement"})
        EXPECT_EQ(stateOf(id), u"skipped") << id;
    EXPECT_THAT(m_clipboard.written, IsEmpty());
}

TEST_F(SelfTestTest, AnEmptyClipboardMayBeUsedByAProcessThatEnds) {
    m_staysAfterwards = false;
    makeAnew();
    runTest();
    EXPECT_EQ(stateOf(u"capture-copy"_s), u"ok");
    EXPECT_EQ(stateOf(u"capture-primary"_s), u"ok");
}

// What cannot be pasted is left on the clipboard for the user, who has not asked for this.
TEST_F(SelfTestTest, AReplacementThatDoesNotLandLeavesTheClipboardAsItWas) {
    const PasteboardContents users = pasteboardText(u"of the user"_s);
    m_clipboard.writeAs(editor, users);
    m_accessibility.element(u"text"_s).takesWrites = false;
    m_poster.hasKeyboard = [](ProcessId) { return false; };
    runTest(50ms);
    EXPECT_EQ(stateOf(u"replacement"_s), u"failed");
    EXPECT_EQ(m_clipboard.held, users);
}

TEST_F(SelfTestTest, AHotKeyOfTheTestDoesNothingElse) {
    const QSignalSpy activated(&m_hotKeys, &HotKeyHandler::activated);
    runTest();
    m_clock.settle();
    EXPECT_EQ(activated.count(), 0);
    m_keysOfDesktop.press(hotKeyTable.front().id);
    m_clock.settle();
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(SelfTestTest, CancelledItEndsAndGivesEverythingBack) {
    const PasteboardContents users = pasteboardText(u"of the user"_s);
    m_highlight.writeAs(editor, users);
    m_accessibility.hangs = true;
    m_test->start();
    for (const QDeadlineTimer guard(20'000); !m_window.isOpen && !guard.hasExpired();)
        turn(5ms);
    ASSERT_TRUE(m_window.isOpen);
    m_test->cancel();
    for (const QDeadlineTimer guard(20'000); m_test->isRunning() && !guard.hasExpired();)
        turn(5ms);
    EXPECT_FALSE(m_test->isRunning());
    EXPECT_FALSE(m_test->hasPassed());
    EXPECT_FALSE(m_window.isOpen);
    EXPECT_EQ(m_highlight.held, users);
    EXPECT_EQ(m_workspace.frontmostProcess(), editor);
}

TEST_F(SelfTestTest, CancelledInTheMidstOfAPasteItEndsOnceTheClipboardIsTheUsersAgain) {
    const PasteboardContents users = pasteboardText(u"of the user"_s);
    m_clipboard.writeAs(editor, users);
    m_accessibility.element(u"text"_s).takesWrites = false;
    m_clipboard.isTaken = false;
    bool isPasted = false;
    m_poster.onPost = [&](KeyChord, ProcessId) { isPasted = true; };
    m_test->start();
    for (const QDeadlineTimer guard(20'000); !isPasted && !guard.hasExpired();)
        turn(5ms);
    ASSERT_TRUE(isPasted);
    ASSERT_NE(m_clipboard.held, users);
    bool isGivenBack = false;
    QObject::connect(m_test.get(), &SelfTest::finished,
                     [&] { isGivenBack = m_clipboard.held == users && !m_window.isOpen; });
    m_test->cancel();
    for (const QDeadlineTimer guard(20'000); m_test->isRunning() && !guard.hasExpired();)
        turn(5ms);
    EXPECT_FALSE(m_test->isRunning());
    EXPECT_TRUE(isGivenBack);
}

/// A check that gives back what it has lent only a while after it was stopped, if ever.
class LendingCheck final : public SelfTestCheck {
  public:
    LendingCheck(Clock& clock, Clock::Duration takes) : m_clock(clock), m_takes(takes) {}

    bool isLent = false;

    [[nodiscard]] QString id() const override { return u"lending"_s; }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override {
        isLent = true;
        const Wakeup stopped;
        const std::stop_callback onStop(std::move(stop), [stopped] { stopped.fire(); });
        co_await stopped;
        co_await sleepFor(m_clock, m_takes, {});
        isLent = false;
        co_return ok({"late"});
    }

  private:
    Clock& m_clock;
    Clock::Duration m_takes;
};

/// Notes whether something was lent when it began.
class CheckAfterwards final : public SelfTestCheck {
  public:
    explicit CheckAfterwards(const bool& isLent) : m_isLent(isLent) {}

    std::optional<bool> wasLent;

    [[nodiscard]] QString id() const override { return u"afterwards"_s; }
    QCoro::Task<SelfCheck> run(std::stop_token) override {
        wasLent = m_isLent;
        co_return ok({"done"});
    }

  private:
    const bool& m_isLent;
};

TEST_F(SelfTestTest, TheNextCheckBeginsOnceOneThatTookTooLongHasGivenBackWhatItLent) {
    const auto lending = std::make_shared<LendingCheck>(m_clock, 4s);
    const auto next = std::make_shared<CheckAfterwards>(lending->isLent);
    m_test = std::make_unique<SelfTest>(
        m_clock, SelfTest::Checks{lending, next},
        std::make_shared<TestStage>(TestStage::Services{.clock = m_clock,
                                                        .workspace = m_workspace,
                                                        .window = m_window,
                                                        .highlight = m_highlight}));
    runTest(20ms);
    EXPECT_EQ(next->wasLent, false);
    EXPECT_EQ(sentenceOf(u"lending"_s), u"There was no answer within 10 seconds.");
}

TEST_F(SelfTestTest, ACheckThatNeverEndsIsNotWaitedForForLong) {
    const auto lending = std::make_shared<LendingCheck>(m_clock, 24h);
    m_test = std::make_unique<SelfTest>(
        m_clock, SelfTest::Checks{lending},
        std::make_shared<TestStage>(TestStage::Services{.clock = m_clock,
                                                        .workspace = m_workspace,
                                                        .window = m_window,
                                                        .highlight = m_highlight}));
    m_test->start();
    turn(5ms);
    const Clock::Duration begin = m_clock.now();
    m_test->cancel();
    for (const QDeadlineTimer guard(20'000); m_test->isRunning() && !guard.hasExpired();)
        turn(50ms);
    EXPECT_FALSE(m_test->isRunning());
    EXPECT_LT(m_clock.now() - begin, SelfTest::endingLimit + SelfTest::clearingLimit);
    m_clock.advance(24h);
}

TEST_F(SelfTestTest, DestroyedInTheMidstItGivesEverythingBack) {
    const PasteboardContents users = pasteboardText(u"of the user"_s);
    m_highlight.writeAs(editor, users);
    m_accessibility.hangs = true;
    m_test->start();
    for (const QDeadlineTimer guard(20'000); !m_window.isOpen && !guard.hasExpired();)
        turn(5ms);
    m_test.reset();
    for (int turns = 0; turns < 100; ++turns)
        turn(5ms);
    EXPECT_FALSE(m_window.isOpen);
    EXPECT_EQ(m_highlight.held, users);
    EXPECT_EQ(m_workspace.frontmostProcess(), editor);
}

TEST_F(SelfTestTest, AfterACancelledRunTheNextIsWhole) {
    m_test->start();
    turn(5ms);
    m_test->cancel();
    for (const QDeadlineTimer guard(20'000); m_test->isRunning() && !guard.hasExpired();)
        turn(5ms);
    runTest();
    EXPECT_TRUE(m_test->hasPassed());
}

// Ports that never answer.

TEST_F(SelfTestTest, AccessibilityThatHangsFailsItsChecksAlone) {
    m_accessibility.hangs = true;
    runTest(50ms);
    EXPECT_EQ(stateOf(u"capture-accessibility"_s), u"failed");
    EXPECT_EQ(stateOf(u"capture-primary"_s), u"ok");
    EXPECT_EQ(stateOf(u"hot-keys"_s), u"ok");
}

TEST_F(SelfTestTest, AHighlightThatHangsFailsItsCheckAlone) {
    m_primary.hangs = true;
    runTest(50ms);
    EXPECT_THAT(failures(), ElementsAre(u"capture-primary"_s));
}

TEST_F(SelfTestTest, NotesThatHangFailTheirCheckAlone) {
    m_notesApplication.isHanging = true;
    runTest(100ms);
    EXPECT_THAT(failures(), ElementsAre(u"notes"_s));
    EXPECT_EQ(sentenceOf(u"notes"_s), u"There was no answer within 10 seconds.");
    m_notesApplication.release();
    m_clock.settle();
}

TEST_F(SelfTestTest, ABackendThatHangsFailsItsCheckAlone) {
    m_isBackendSilent = true;
    runTest(100ms);
    EXPECT_THAT(failures(), ElementsAre(u"backend"_s));
    EXPECT_EQ(stateOf(u"provider"_s), u"skipped");
}

TEST_F(SelfTestTest, APortalThatHangsFailsItsCheckAlone) {
    m_session.isHanging = true;
    m_session.portalSupport = std::unexpected(u"No desktop portal answers."_s);
    runTest(100ms);
    EXPECT_NE(stateOf(u"portal"_s), u"ok");
    EXPECT_EQ(stateOf(u"hot-keys"_s), u"ok");
}

TEST_F(SelfTestTest, AWindowThatHangsSkipsWhatNeedsIt) {
    m_window.isHanging = true;
    runTest(100ms);
    EXPECT_EQ(stateOf(u"window"_s), u"failed");
    for (const char* id :
         {"capture-accessibility", "capture-primary", "capture-copy", "replacement", "hot-keys"})
        EXPECT_EQ(stateOf(id), u"skipped") << id;
}

TEST_F(SelfTestTest, AClipboardThatHangsIsLeftAlone) {
    m_clipboard.hangs = true;
    runTest(50ms);
    EXPECT_EQ(stateOf(u"replacement"_s), u"skipped");
    EXPECT_THAT(m_clipboard.written, IsEmpty());
}

} // namespace
} // namespace vorq
