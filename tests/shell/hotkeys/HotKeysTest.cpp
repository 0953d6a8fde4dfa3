// Which hot keys there are, and what becomes of a press.

#include "doubles/shell/ShellFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class HotKeysTest : public ShellFixture {};

TEST_F(HotKeysTest, AreRegisteredInOrder) {
    m_delegate.applicationDidFinishLaunching({.background = true});
    std::vector<std::pair<char, std::uint32_t>> order;
    for (const auto& [chord, id] : m_hotKeys.registered()) {
        order.emplace_back(chord.letter, id.number);
        EXPECT_EQ(chord.modifiers, 768u);
        EXPECT_EQ(id.signature, hotKeySignature);
    }
    EXPECT_THAT(order, ElementsAre(Pair('A', 1), Pair('S', 2), Pair('P', 4), Pair('T', 3)));
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq registered Command+Shift+A hotkey.",
                                         "Vorq registered Command+Shift+S note hotkey.",
                                         "Vorq registered Command+Shift+P push-note hotkey.",
                                         "Vorq registered Command+Shift+T clear-chat hotkey."));
    EXPECT_THAT(m_statusItem.notices, IsEmpty());
}

TEST_F(HotKeysTest, OneThatIsTakenDoesNotStopTheOthers) {
    m_hotKeys.failures['S'] = {.status = 10, .isTaken = true};
    m_delegate.applicationDidFinishLaunching({.background = true});
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq registered Command+Shift+A hotkey.",
                                         "Vorq failed to register Command+Shift+S hotkey: 10",
                                         "Vorq registered Command+Shift+P push-note hotkey.",
                                         "Vorq registered Command+Shift+T clear-chat hotkey."));
    EXPECT_THAT(m_statusItem.notices,
                ElementsAre("Super+Shift+S is taken by another program. Bind a key of your "
                            "desktop to: vorq note"));
}

TEST_F(HotKeysTest, OneThatIsWonLaterIsNoLongerMissed) {
    m_hotKeys.failures['T'] = {.status = 10, .isTaken = true};
    m_delegate.applicationDidFinishLaunching({.background = true});
    m_hotKeys.setAvailable({hotKeySignature, 3}, true);
    EXPECT_THAT(m_statusItem.notices, IsEmpty());
    m_hotKeys.setAvailable({hotKeySignature, 1}, false);
    EXPECT_THAT(m_statusItem.notices,
                ElementsAre("Super+Shift+A is taken by another program. Bind a key of your "
                            "desktop to: vorq summon"));
}

TEST_F(HotKeysTest, OneThatBecomesFreeIsWonAfterAWhile) {
    m_hotKeys.failures['T'] = {.status = 10, .isTaken = true};
    m_delegate.applicationDidFinishLaunching({.background = true});
    EXPECT_FALSE(m_statusItem.hotKeys.contains(HotKeyAction::ClearChat));
    advance(30s);
    EXPECT_THAT(m_statusItem.notices, SizeIs(1));
    m_hotKeys.failures.clear();
    m_log.clear();
    advance(11s);
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq registered Command+Shift+T clear-chat hotkey."));
    EXPECT_THAT(m_statusItem.notices, IsEmpty());
    EXPECT_TRUE(m_statusItem.hotKeys.contains(HotKeyAction::ClearChat));
    const auto attempts = m_hotKeys.attempts;
    advance(10min);
    EXPECT_EQ(m_hotKeys.attempts, attempts) << "looks for what is not missing";
}

TEST_F(HotKeysTest, OneThatBecomesFreeIsWonAsTheMenuOpens) {
    m_hotKeys.failures['A'] = {.status = 10, .isTaken = true};
    m_delegate.applicationDidFinishLaunching({.background = true});
    m_hotKeys.failures.clear();
    emit m_statusItem.menuWillOpen();
    EXPECT_THAT(m_statusItem.notices, IsEmpty());
    EXPECT_TRUE(m_statusItem.hotKeys.contains(HotKeyAction::Panel));
}

TEST_F(HotKeysTest, KeysOfNotesThatCannotBeMadeAreNotSpokenOf) {
    m_notes.available = false;
    AppDelegate without(ports());
    m_hotKeys.failures['S'] = {.status = 10, .isTaken = true};
    without.applicationDidFinishLaunching({.background = true});
    EXPECT_THAT(m_statusItem.notices, IsEmpty());
    EXPECT_FALSE(m_statusItem.offersNotes);
    m_hotKeys.handlerFailure = HotKeyFailure{.status = -9850};
    without.applicationDidFinishLaunching({.background = true});
    EXPECT_THAT(m_statusItem.notices,
                ElementsAre("This desktop keeps global keys to itself. Bind keys of your desktop "
                            "to: vorq summon, vorq clear"));
}

TEST_F(HotKeysTest, TheKeyOfTheWritingToolsIsThereWhileTheyAre) {
    m_delegate.applicationDidFinishLaunching({.background = true});
    EXPECT_FALSE(m_delegate.hotKeys().offered().contains(HotKeyAction::Rewrite));
    m_log.clear();
    m_delegate.hotKeys().setOffersWriting(true);
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq registered Command+Shift+W rewrite hotkey."));
    EXPECT_TRUE(m_statusItem.hotKeys.contains(HotKeyAction::Rewrite));
    m_delegate.hotKeys().setOffersWriting(false);
    EXPECT_FALSE(m_statusItem.hotKeys.contains(HotKeyAction::Rewrite));
    for (const auto& [chord, id] : m_hotKeys.registered())
        EXPECT_NE(chord.letter, 'W');
}

TEST_F(HotKeysTest, TheKeyOfTheWritingToolsThatIsTakenIsMissedUntilTheyGo) {
    m_hotKeys.failures['W'] = {.status = 10, .isTaken = true};
    m_delegate.hotKeys().setOffersWriting(true);
    m_delegate.applicationDidFinishLaunching({.background = true});
    EXPECT_THAT(m_statusItem.notices,
                ElementsAre("Super+Shift+W is taken by another program. Bind a key of your "
                            "desktop to: vorq rewrite"));
    m_hotKeys.failures.clear();
    advance(11s);
    EXPECT_THAT(m_statusItem.notices, IsEmpty());
    EXPECT_TRUE(m_statusItem.hotKeys.contains(HotKeyAction::Rewrite));
    m_hotKeys.failures['W'] = {.status = 10, .isTaken = true};
    m_delegate.hotKeys().setOffersWriting(false);
    m_delegate.hotKeys().setOffersWriting(true);
    EXPECT_THAT(m_statusItem.notices, SizeIs(1));
    m_delegate.hotKeys().setOffersWriting(false);
    EXPECT_THAT(m_statusItem.notices, IsEmpty());
}

TEST_F(HotKeysTest, TheKeyOfTheWritingToolsIsOfTheApplicationInFront) {
    launch();
    std::vector<std::optional<ProcessId>> asked;
    QObject::connect(&m_delegate, &AppDelegate::rewriteRequested,
                     [&](std::optional<ProcessId> source) { asked.push_back(source); });
    m_delegate.hotKeys().setOffersWriting(true);
    m_workspace.bringToFront(browser);
    press(5);
    EXPECT_THAT(asked, ElementsAre(browser));
}

TEST_F(HotKeysTest, TheCommandSavesWhateverIsHighlighted) {
    launch();
    m_workspace.bringToFront(browser);
    emit m_statusItem.chosen(StatusCommand::SaveHighlight);
    m_clock.settle();
    EXPECT_THAT(m_notes.saves, ElementsAre(Pair(std::nullopt, "(none)")));
    EXPECT_THAT(m_calls, ElementsAre("flash check"));
    emit m_statusItem.chosen(StatusCommand::PushNoteDraft);
    m_clock.settle();
    EXPECT_THAT(m_calls, ElementsAre("flash check", "flash check"));
}

TEST_F(HotKeysTest, WithoutAHandlerNoneIsRegistered) {
    m_hotKeys.handlerFailure = HotKeyFailure{.status = -9850};
    m_delegate.applicationDidFinishLaunching({.background = true});
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq failed to install hotkey event handler: -9850"));
    EXPECT_THAT(m_hotKeys.registered(), IsEmpty());
    EXPECT_THAT(m_statusItem.notices,
                ElementsAre("This desktop keeps global keys to itself. Bind keys of your desktop "
                            "to: vorq summon, vorq note, vorq push-note, vorq clear"));
}

TEST_F(HotKeysTest, APressWithAForeignSignatureIsIgnored) {
    launch();
    press(1, hotKeySignature + 1);
    press(99);
    EXPECT_THAT(m_calls, IsEmpty());
    EXPECT_THAT(m_log.all(), IsEmpty());
}

TEST_F(HotKeysTest, TheSourceIsTheOneOfThePress) {
    launch();
    m_workspace.bringToFront(editor);
    m_hotKeys.press({hotKeySignature, 1});
    m_workspace.bringToFront(browser);
    EXPECT_THAT(m_calls, IsEmpty()) << "acts on a later turn of the event loop";
    m_clock.settle();
    EXPECT_THAT(m_capture.asked, ElementsAre(editor));
}

TEST_F(HotKeysTest, OverVorqItselfTheLastOtherApplicationIsTheSource) {
    launch();
    m_workspace.bringToFront(editor);
    m_workspace.bringToFront(self);
    press(1);
    EXPECT_THAT(m_capture.asked, ElementsAre(editor));
}

TEST_F(HotKeysTest, TheApplicationInFrontAtLaunchCountsAsWell) {
    m_workspace.bringToFront(editor);
    launch();
    m_workspace.bringToFront(self);
    press(1);
    EXPECT_THAT(m_capture.asked, ElementsAre(editor));
}

TEST_F(HotKeysTest, BeforeBindingOnlyTheNoteKeysAnswer) {
    m_delegate.applicationDidFinishLaunching({.background = true});
    m_calls.clear();
    m_log.clear();
    for (const std::uint32_t number : {1u, 2u, 3u, 4u})
        press(number);
    EXPECT_THAT(m_calls, ElementsAre("flash fail", "flash fail"));
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq ⌘⇧S note hotkey — source: (none) pid=nil",
                                         "Vorq ⌘⇧S ignored — appState not bound yet.",
                                         "Vorq ⌘⇧P push-note hotkey",
                                         "Vorq ⌘⇧P ignored — appState not bound yet."));
}

TEST_F(HotKeysTest, ANoteIsSavedFromTheSource) {
    launch();
    m_workspace.bringToFront(browser);
    press(2);
    EXPECT_THAT(m_notes.saves, ElementsAre(Pair(browser, "firefox-esr")));
    EXPECT_THAT(m_calls, ElementsAre("flash check"));
    EXPECT_THAT(m_log.all(), ElementsAre("Vorq ⌘⇧S note hotkey — source: firefox-esr pid=9"));
}

TEST_F(HotKeysTest, ANoteThatCouldNotBeSavedFlashesFailureAndSaysWhy) {
    launch();
    m_notes.succeeds = false;
    m_notes.message = "No notes application.";
    m_notes.whyNot = "No notes application.";
    press(2);
    EXPECT_EQ(m_statusItem.noteAdvice, (NoteAdvice{.failure = "No notes application."}));
    EXPECT_THAT(m_calls, ElementsAre("flash fail"));
    EXPECT_THAT(m_log.all(), Contains("Vorq ⌘⇧S note save failed: No notes application."));
}

TEST_F(HotKeysTest, AHeldTextIsSavedOrDiscardedFromTheMenu) {
    launch();
    m_notes.succeeds = false;
    m_notes.isHolding = true;
    press(2);
    EXPECT_TRUE(m_statusItem.noteAdvice.holdsText);
    m_notes.succeeds = true;
    emit m_statusItem.chosen(StatusCommand::SaveHeldText);
    m_clock.settle();
    EXPECT_FALSE(m_statusItem.noteAdvice.holdsText);
    EXPECT_THAT(m_calls, ElementsAre("flash fail", "flash check"));

    m_notes.isHolding = true;
    emit m_statusItem.chosen(StatusCommand::DiscardHeldText);
    EXPECT_FALSE(m_statusItem.noteAdvice.holdsText);
    EXPECT_THAT(m_calls, ElementsAre("flash fail", "flash check")) << "nothing to flash";
}

TEST_F(HotKeysTest, PushingSealsTheDraft) {
    launch();
    press(4);
    EXPECT_THAT(m_calls, ElementsAre("flash check"));
    m_notes.succeeds = false;
    press(4);
    EXPECT_THAT(m_calls, ElementsAre("flash check", "flash fail"));
    EXPECT_THAT(m_log.all(), Contains("Vorq ⌘⇧P — no open note draft to push."));
}

TEST_F(HotKeysTest, TheChatIsClearedForASignedInUser) {
    launch();
    submit("a question");
    EXPECT_THAT(texts(), SizeIs(2));
    press(3);
    advance(2s);
    EXPECT_THAT(texts(), ElementsAre(u"Hello 👋, Vorq here…"_s));
}

TEST_F(HotKeysTest, TheChatStaysWithNobodySignedIn) {
    launch();
    submit("a question");
    state().account().markSessionExpired();
    const QStringList before = texts();
    press(3);
    EXPECT_EQ(texts(), before);
}

} // namespace
} // namespace vorq
