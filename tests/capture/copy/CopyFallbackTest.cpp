#include "capture/copy/CopyFallback.h"
#include "doubles/capture/CaptureFixture.h"
#include "doubles/shell/LogLines.h"
#include "platform/testing/ScriptedKeyPoster.h"
#include "platform/testing/ScriptedPasteboard.h"
#include "platform/testing/ScriptedWorkspace.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

PasteboardForm clipboardForm(const char* name, const QByteArray& bytes) {
    return {.name = name, .bytes = bytes, .type = name};
}

class CopyFallbackTest : public testing::Test {
  protected:
    static constexpr ProcessId browser = 42;
    static constexpr ProcessId other = 43;
    static constexpr KeyChord copyChord{.key = KeyChord::Key::C};

    CopyFallbackTest() {
        workspace.launch({browser, u"chromium"_s, u"Chromium"_s});
        workspace.launch({other, u"mousepad"_s, u"Mousepad"_s});
        workspace.launch({own, u"com.vorq.desk"_s, u"Vorq"_s});
        workspace.bringToFront(browser);
        pasteboard.writeAs(other, users);
        keys.hasKeyboard = [this](ProcessId process) {
            return workspace.frontmostProcess() == process;
        };
        keys.onPost = [this](KeyChord, ProcessId process) {
            pasteboard.writeAs(process, pasteboardText("  copied\n"));
        };
    }

    [[nodiscard]] Running<QString> start(std::optional<ProcessId> source = browser) {
        return Running<QString>(fallback.captureFromCopyShortcutFast(source, stop.get_token()));
    }

    // In steps, so that it is known when it ended.
    QString finish(const Running<QString>& copying) {
        const Clock::Duration before = clock.now();
        QCoreApplication::processEvents();
        for (int step = 0; step < 20'000 && !copying.hasEnded(); ++step) {
            clock.advance(1ms);
            QCoreApplication::processEvents();
        }
        duration = clock.now() - before;
        return copying.result();
    }
    QString copy(std::optional<ProcessId> source = browser) { return finish(start(source)); }

    void answerNothing() { keys.onPost = nullptr; }

    const ProcessId own = static_cast<ProcessId>(QCoreApplication::applicationPid());
    const PasteboardContents users{
        clipboardForm("text/html", "<b>user's</b>"),
        clipboardForm("UTF8_STRING", "user's"),
        clipboardForm("image/png", QByteArray("\x89PNG\0\1", 6)),
        {.name = "vnd.custom", .bytes = QByteArray(8, '\7'), .type = "ATOM", .unit = 32}};
    ManualClock clock;
    ScriptedWorkspace workspace;
    ScriptedPasteboard pasteboard;
    ScriptedKeyPoster keys;
    TurnQueue turns;
    CopyFallback fallback{{clock, pasteboard, keys, workspace}, turns};
    std::stop_source stop;
    Clock::Duration duration{};
};

TEST_F(CopyFallbackTest, ReturnsWhatIsCopiedTrimmedAndGivesTheClipboardBack) {
    EXPECT_EQ(copy(), "copied");
    EXPECT_THAT(keys.posted(), ElementsAre(std::pair(copyChord, browser)));
    EXPECT_EQ(pasteboard.held, users);
    EXPECT_EQ(duration, 64ms);
}

TEST_F(CopyFallbackTest, LeavesAnEmptyClipboardEmpty) {
    pasteboard.writeAs(std::nullopt, {});
    EXPECT_EQ(copy(), "copied");
    EXPECT_THAT(pasteboard.held, IsEmpty());
}

TEST_F(CopyFallbackTest, TouchesNothingWhereVorqIsInFrontAndNoSourceIsKnown) {
    workspace.bringToFront(own);
    EXPECT_EQ(copy(std::nullopt), "");
    EXPECT_EQ(copy(own), "");
    EXPECT_THAT(keys.posted(), IsEmpty());
    EXPECT_THAT(pasteboard.written, IsEmpty());
}

TEST_F(CopyFallbackTest, CopiesFromTheApplicationInFrontInsteadOfVorq) {
    EXPECT_EQ(copy(own), "copied");
    EXPECT_THAT(keys.posted(), ElementsAre(std::pair(copyChord, browser)));
}

TEST_F(CopyFallbackTest, WaitsForModifiersAndThenLiftsThem) {
    const LogLines log;
    keys.held = HeldModifier::shift | HeldModifier::command;
    EXPECT_EQ(copy(), "copied");
    EXPECT_EQ(duration, 1500ms + 64ms);
    const QString lines = log.all().join(u'\n');
    EXPECT_THAT(lines.toStdString(),
                HasSubstr("Vorq copy fallback waiting out leftover modifiers flags=1179648"));
    EXPECT_THAT(lines.toStdString(),
                HasSubstr("Vorq copy fallback leftover modifiers flags=1179648 — posting "
                          "private-state ⌘C anyway"));
}

TEST_F(CopyFallbackTest, WaitsNoLongerThanModifiersAreHeld) {
    keys.held = HeldModifier::option;
    const Running<QString> copying = start();
    clock.advance(90ms);
    EXPECT_THAT(keys.posted(), IsEmpty());
    keys.held = 0;
    EXPECT_EQ(finish(copying), "copied");
    EXPECT_EQ(duration, 10ms + 64ms);
}

TEST_F(CopyFallbackTest, DoesNotWaitForTheKeyOfHotKeys) {
    keys.held = HeldModifier::command;
    EXPECT_EQ(copy(), "copied");
    EXPECT_EQ(duration, 64ms);
}

TEST_F(CopyFallbackTest, LeavesTheClipboardAloneWhereNobodyAnswers) {
    answerNothing();
    EXPECT_EQ(copy(), "");
    EXPECT_EQ(duration, 24ms + 144ms + 40ms);
    EXPECT_THAT(pasteboard.written, IsEmpty());
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, GivesTheClipboardBackAfterAnAnswerThatComesLate) {
    answerNothing();
    EXPECT_EQ(copy(), "");
    clock.advance(1s);
    pasteboard.writeAs(browser, pasteboardText("late"));
    clock.advance(60ms);
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, GivesTheClipboardBackAfterASecondAnswer) {
    EXPECT_EQ(copy(), "copied");
    clock.advance(100ms);
    pasteboard.writeAs(browser, pasteboardText("copied again"));
    clock.advance(60ms);
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, TakesALateAnswerForNoneOfTheUsersWhenTheNextCopyBegins) {
    const auto answering = std::exchange(keys.onPost, nullptr);
    EXPECT_EQ(copy(), "");
    pasteboard.writeAs(browser, pasteboardText("late"));
    keys.onPost = answering;
    EXPECT_EQ(copy(), "copied");
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, KeepsWhatTheUserCopiesAfterwards) {
    EXPECT_EQ(copy(), "copied");
    clock.advance(100ms);
    keys.wasUsed = true;
    pasteboard.writeAs(browser, pasteboardText("by the user"));
    clock.advance(5s);
    EXPECT_EQ(pasteboard.held, pasteboardText("by the user"));
}

TEST_F(CopyFallbackTest, KeepsWhatTheUserCopiesOnTheWayToAnotherApplication) {
    EXPECT_EQ(copy(), "copied");
    clock.advance(110ms);
    // All within one look of the guard.
    keys.wasUsed = true;
    pasteboard.writeAs(browser, pasteboardText("by the user"));
    workspace.bringToFront(other);
    clock.advance(5s);
    EXPECT_EQ(pasteboard.held, pasteboardText("by the user"));
}

TEST_F(CopyFallbackTest, KeepsWhatTheUserCopiesRightBeforeTheNextCopy) {
    EXPECT_EQ(copy(), "copied");
    clock.advance(110ms);
    keys.wasUsed = true;
    pasteboard.writeAs(browser, pasteboardText("by the user"));
    workspace.bringToFront(other);
    EXPECT_EQ(copy(other), "copied");
    EXPECT_EQ(pasteboard.held, pasteboardText("by the user"));
}

TEST_F(CopyFallbackTest, StillMindsALateAnswerWhileTheUserTypesIntoVorq) {
    answerNothing();
    EXPECT_EQ(copy(), "");
    workspace.bringToFront(own);
    keys.wasUsed = true;
    pasteboard.writeAs(browser, pasteboardText("late"));
    clock.advance(60ms);
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, KeepsWhatTheApplicationWritesMuchLater) {
    EXPECT_EQ(copy(), "copied");
    clock.advance(3s);
    pasteboard.writeAs(browser, pasteboardText("much later"));
    clock.advance(3s);
    EXPECT_EQ(pasteboard.held, pasteboardText("much later"));
}

TEST_F(CopyFallbackTest, KeepsWhatSomebodyElseWritesMeanwhile) {
    keys.onPost = [this](KeyChord, ProcessId) {
        pasteboard.writeAs(other, pasteboardText("of another"));
    };
    EXPECT_EQ(copy(), "");
    clock.advance(5s);
    EXPECT_EQ(pasteboard.held, pasteboardText("of another"));
}

TEST_F(CopyFallbackTest, KeepsWhatSomebodyElseWritesAtTheLastMoment) {
    pasteboard.onWrite = [this] { pasteboard.writeAs(other, pasteboardText("of another")); };
    EXPECT_EQ(copy(), "copied");
    EXPECT_EQ(pasteboard.held, pasteboardText("of another"));
}

TEST_F(CopyFallbackTest, GivesTheClipboardBackWhenTheApplicationDiesAfterItsAnswer) {
    const Running<QString> copying = start();
    clock.advance(50ms);
    workspace.quit(browser);
    pasteboard.writeAs(std::nullopt, {});
    EXPECT_EQ(finish(copying), "");
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, SendsNothingToAnApplicationThatNeverComesToTheFront) {
    workspace.bringToFront(other);
    workspace.holdBackActivations();
    EXPECT_EQ(copy(), "");
    EXPECT_EQ(duration, 80ms + 20 * 40ms);
    EXPECT_THAT(keys.posted(), IsEmpty());
    EXPECT_THAT(pasteboard.written, IsEmpty());
}

TEST_F(CopyFallbackTest, SendsNothingWhereTheFocusIsStolenMidway) {
    keys.hasKeyboard = [](ProcessId) { return false; };
    EXPECT_EQ(copy(), "");
    EXPECT_THAT(pasteboard.written, IsEmpty());
}

TEST_F(CopyFallbackTest, TriesOnceMoreWhereThePanelComesBetween) {
    keys.hasKeyboard = [this, isFirst = true](ProcessId) mutable {
        if (isFirst) workspace.bringToFront(own);
        return !std::exchange(isFirst, false);
    };
    EXPECT_EQ(copy(), "copied");
    EXPECT_EQ(workspace.frontmostProcess(), own);
}

TEST_F(CopyFallbackTest, GivesTheKeyboardBackToThePanel) {
    workspace.bringToFront(own);
    EXPECT_EQ(copy(), "copied");
    EXPECT_EQ(duration, 80ms + 64ms);
    EXPECT_THAT(workspace.activations(),
                ElementsAre(static_cast<WindowId>(browser), static_cast<WindowId>(own)));
}

TEST_F(CopyFallbackTest, GivesTheKeyboardBackAsSoonAsItIsAnswered) {
    workspace.bringToFront(own);
    const Running<QString> copying = start();
    clock.advance(80ms + 24ms);
    EXPECT_THAT(keys.posted(), testing::SizeIs(1));
    EXPECT_EQ(workspace.frontmostProcess(), own);
    EXPECT_EQ(finish(copying), "copied");
}

TEST_F(CopyFallbackTest, LeavesTheKeyboardWhereTheUserHasGoneMeanwhile) {
    workspace.bringToFront(own);
    keys.onPost = [this](KeyChord, ProcessId process) {
        pasteboard.writeAs(process, pasteboardText("copied"));
        workspace.bringToFront(other);
    };
    EXPECT_EQ(copy(), "copied");
    EXPECT_EQ(workspace.frontmostProcess(), other);
}

TEST_F(CopyFallbackTest, LeavesAClipboardAloneWhoseOwnerStandsStill) {
    pasteboard.hangs = true;
    EXPECT_EQ(copy(), "");
    EXPECT_EQ(duration, 24ms + ClipboardLoan::snapshotLimit);
    EXPECT_THAT(keys.posted(), IsEmpty());
}

TEST_F(CopyFallbackTest, LeavesAClipboardAloneThatCannotBeHadWhole) {
    pasteboard.refusal = u"too much"_s;
    EXPECT_EQ(copy(), "");
    EXPECT_THAT(keys.posted(), IsEmpty());
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, GivesTheClipboardBackWhereTheTextNeverComes) {
    keys.onPost = [this](KeyChord, ProcessId process) {
        pasteboard.writeAs(process, pasteboardText("copied"));
        pasteboard.hangs = true;
    };
    EXPECT_EQ(copy(), "");
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, SendsATerminalItsOwnChordOrNothing) {
    workspace.launch({browser, u"org.kde.konsole"_s, u"Konsole"_s});
    EXPECT_EQ(copy(), "copied");
    const KeyChord chord{.key = KeyChord::Key::C, .hasShift = true};
    EXPECT_THAT(keys.posted(), ElementsAre(std::pair(chord, browser)));

    workspace.launch({browser, u"XTerm"_s, u"XTerm"_s});
    EXPECT_EQ(copy(), "");
    EXPECT_EQ(keys.posted().size(), 1U);
}

TEST_F(CopyFallbackTest, DoesNothingWhereKeysOrTheClipboardAreNotToBeHad) {
    keys.support = std::unexpected(u"no keys"_s);
    EXPECT_EQ(copy(), "");
    keys.support = {};
    pasteboard.support = std::unexpected(u"no clipboard"_s);
    EXPECT_EQ(copy(), "");
    EXPECT_THAT(keys.posted(), IsEmpty());
}

TEST_F(CopyFallbackTest, GivesTheClipboardBackWhenItIsStopped) {
    const Running<QString> copying = start();
    clock.advance(30ms);
    ASSERT_EQ(keys.posted().size(), 1U);
    stop.request_stop();
    EXPECT_EQ(finish(copying), "");
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, SendsNothingOnceItIsStopped) {
    const Running<QString> copying = start();
    stop.request_stop();
    EXPECT_EQ(finish(copying), "");
    EXPECT_THAT(keys.posted(), IsEmpty());
}

TEST_F(CopyFallbackTest, WaitsForAPasteThatIsUnderWay) {
    auto pasting = std::make_optional(turns.takeTurn());
    const Running<QString> copying = start();
    clock.advance(1s);
    EXPECT_THAT(keys.posted(), IsEmpty());
    pasting.reset();
    EXPECT_EQ(finish(copying), "copied");
}

TEST_F(CopyFallbackTest, WaitsForNothingOnceItIsStopped) {
    const auto pasting = turns.takeTurn();
    const Running<QString> copying = start();
    clock.advance(1s);
    stop.request_stop();
    EXPECT_EQ(finish(copying), "");
    EXPECT_THAT(keys.posted(), IsEmpty());
}

TEST_F(CopyFallbackTest, MakesOneCopyAfterTheOther) {
    const Running<QString> first = start();
    const Running<QString> second = start();
    clock.advance(30ms);
    EXPECT_EQ(keys.posted().size(), 1U);
    EXPECT_EQ(finish(first), "copied");
    EXPECT_EQ(finish(second), "copied");
    EXPECT_EQ(keys.posted().size(), 2U);
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(CopyFallbackTest, GivesTheClipboardBackAThousandTimes) {
    const LogLines log;
    for (int time = 0; time < 1000; ++time) {
        ASSERT_EQ(copy(), "copied");
        ASSERT_EQ(pasteboard.held, users);
    }
}

} // namespace
} // namespace vorq
