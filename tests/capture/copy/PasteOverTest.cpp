#include "capture/copy/PasteOver.h"
#include "doubles/capture/CaptureFixture.h"
#include "platform/testing/ScriptedKeyPoster.h"
#include "platform/testing/ScriptedPasteboard.h"
#include "platform/testing/ScriptedWorkspace.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::SizeIs;
using Outcome = PasteOver::Outcome;

class PasteOverTest : public testing::Test {
  protected:
    static constexpr ProcessId editor = 42;
    static constexpr ProcessId other = 43;

    PasteOverTest() {
        workspace.launch({editor, u"mousepad"_s, u"Mousepad"_s});
        workspace.launch({other, u"gedit"_s, u"Gedit"_s});
        workspace.bringToFront(editor);
        pasteboard.writeAs(other, users);
        keys.hasKeyboard = [this](ProcessId process) {
            return workspace.frontmostProcess() == process;
        };
        accessibility.focusedName = u"field"_s;
        field.content = "an old text";
        field.text = "old";
        field.range = target.range;
    }

    // It replaces what is selected by what the clipboard holds.
    void pasteOnPost() {
        keys.onPost = [this](KeyChord, ProcessId) {
            pasted = QString::fromUtf8(pasteboard.held.front().bytes);
            field.content = field.content->replace(3, 3, pasted);
            field.text.reset();
            field.range = TextRange{.location = 3 + pasted.size(), .length = 0};
        };
    }

    Outcome finish(const Running<Outcome>& running) {
        for (const QDeadlineTimer guard(30'000); !running.hasEnded() && !guard.hasExpired();) {
            Running<Outcome>::turnOnce();
            clock.advance(2ms);
        }
        return running.result();
    }
    Outcome replace(const QString& replacement = u"new"_s) {
        return finish(Running<Outcome>(paster.replaceSelectedText(replacement, target, {})));
    }
    Outcome undo() { return finish(Running<Outcome>(paster.undo({}))); }

    void expectOnClipboard(const QString& text) const {
        EXPECT_EQ(pasteboard.held, pasteboardText(text));
        EXPECT_EQ(field.content, "an old text");
        EXPECT_THAT(keys.posted(), IsEmpty());
    }

    const PasteboardContents users = pasteboardText("user's");
    PasteOver::Target target{.source = editor,
                             .window = static_cast<WindowId>(editor),
                             .original = "old",
                             .range = TextRange{.location = 3, .length = 3}};
    QString pasted;
    ManualClock clock;
    ScriptedAccessibility accessibility;
    ScriptedWorkspace workspace;
    ScriptedPasteboard pasteboard;
    ScriptedKeyPoster keys;
    ScriptedCopyShortcut copyShortcut;
    ScriptedElement& field = accessibility.element(u"field"_s);
    QTemporaryDir folder;
    CaptureLog log{clock, folder.filePath("capture.log"), {}, folder.filePath("pills.log")};
    TurnQueue turns;
    PasteOver paster{{clock, accessibility, pasteboard, keys, workspace, copyShortcut, log, turns}};
};

TEST_F(PasteOverTest, WritesByAccessibilityWhereThatIsTaken) {
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.text, "new");
    EXPECT_THAT(keys.posted(), IsEmpty());
    EXPECT_THAT(pasteboard.written, IsEmpty());
}

TEST_F(PasteOverTest, PastesWhereAWriteWasSaidToBeTakenAndWasNot) {
    field.feignsWrites = true;
    pasteOnPost();
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(pasted, "new");
    EXPECT_EQ(field.content, "an new text");
    EXPECT_THAT(keys.posted(), SizeIs(1));
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(PasteOverTest, PastesWhereAWriteTakesSeveralStepsToUndo) {
    accessibility.isOneStep = false;
    pasteOnPost();
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.content, "an new text");
    EXPECT_THAT(keys.posted(), SizeIs(1));
}

TEST_F(PasteOverTest, WritesInSeveralStepsWhereNothingCanBePasted) {
    accessibility.isOneStep = false;
    keys.support = std::unexpected(u"no keys"_s);
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.text, "new");
}

TEST_F(PasteOverTest, WritesInSeveralStepsWhereTheClipboardCouldNotBeGivenBack) {
    accessibility.isOneStep = false;
    pasteboard.refusal = u"too much"_s;
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.text, "new");
    EXPECT_THAT(pasteboard.written, IsEmpty());
    EXPECT_THAT(keys.posted(), IsEmpty());
}

TEST_F(PasteOverTest, GivesUpWhereTheOriginalStaysSelected) {
    field.feignsWrites = true;
    EXPECT_EQ(replace(), Outcome::NotReplaced);
    EXPECT_THAT(keys.posted(), SizeIs(1));
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(PasteOverTest, TakesTheBeginningOfTheOriginalForNoReplacement) {
    field.feignsWrites = true;
    EXPECT_EQ(replace("ol"), Outcome::NotReplaced);
    pasteOnPost();
    EXPECT_EQ(replace("ol"), Outcome::Replaced);
    EXPECT_EQ(field.content, "an ol text");
    EXPECT_THAT(keys.posted(), SizeIs(2));
}

TEST_F(PasteOverTest, KnowsAReplacementThatBeginsWithTheOriginal) {
    field.feignsWrites = true;
    pasteOnPost();
    EXPECT_EQ(replace("older"), Outcome::Replaced);
    EXPECT_EQ(field.content, "an older text");
    EXPECT_THAT(keys.posted(), SizeIs(1));
}

TEST_F(PasteOverTest, PastesOnceMoreWhereTheOriginalIsThereAndNotSelected) {
    field.feignsWrites = true;
    keys.onPost = [this](KeyChord, ProcessId) {
        field.text.reset();
        field.range.reset();
    };
    EXPECT_EQ(replace(), Outcome::NotReplaced);
    EXPECT_THAT(keys.posted(), SizeIs(2));
}

TEST_F(PasteOverTest, PastesNoSecondTimeWhereItLandsLate) {
    field.feignsWrites = true;
    keys.onPost = [this](KeyChord, ProcessId) {
        pasted = QString::fromUtf8(pasteboard.held.front().bytes);
        clock.after(1s, [this] {
            field.content = field.content->replace(3, 3, pasted);
            field.text.reset();
            field.range = TextRange{.location = 3 + pasted.size(), .length = 0};
        });
        field.text.reset();
        field.range.reset();
    };
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.content, "an new text");
    EXPECT_THAT(keys.posted(), SizeIs(1));
}

TEST_F(PasteOverTest, PastesNoSecondTimeWhereItLandedChanged) {
    field.feignsWrites = true;
    keys.onPost = [this](KeyChord, ProcessId) {
        field.text.reset();
        field.range = TextRange{.location = 6, .length = 0};
        field.content = "an New text";
    };
    EXPECT_EQ(replace(), Outcome::NotReplaced);
    EXPECT_THAT(keys.posted(), SizeIs(1));
}

TEST_F(PasteOverTest, KnowsTheReplacementWhereTheOriginalOccursAgain) {
    field.feignsWrites = true;
    field.content = "an old text of old words";
    pasteOnPost();
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.content, "an new text of old words");
    EXPECT_THAT(keys.posted(), SizeIs(1));
}

TEST_F(PasteOverTest, SelectsTheOriginalAgainWhereItLostItsSelection) {
    field.text.reset();
    field.range = TextRange{.location = 0, .length = 0};
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.range, target.range);
}

TEST_F(PasteOverTest, LeavesTheTextOnTheClipboardWhereAnotherDocumentIsOpen) {
    field.text.reset();
    field.range.reset();
    field.content = "something else altogether";
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    EXPECT_EQ(pasteboard.held, pasteboardText("new"));
    EXPECT_THAT(keys.posted(), IsEmpty());
}

TEST_F(PasteOverTest, LeavesTheTextOnTheClipboardWhereSomethingElseIsSelected) {
    field.text = "text";
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, SelectsItAnewWhereSomethingElseIsSelectedIfSoTold) {
    target.reselects = true;
    field.text = "an old text";
    field.range = TextRange{.location = 0, .length = 11};
    field.isEditor = true;
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.content, "an new text");
}

TEST_F(PasteOverTest, SelectsNothingAnewWhereAnotherTextStandsNow) {
    target.reselects = true;
    field.content = "an odd text";
    field.text = "an odd text";
    field.range = TextRange{.location = 0, .length = 11};
    field.isEditor = true;
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    EXPECT_EQ(field.content, "an odd text");
}

TEST_F(PasteOverTest, LeavesTheTextOnTheClipboardWhereAnotherWindowIsInFront) {
    target.window = 4711;
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, LeavesTheTextOnTheClipboardWhereTheApplicationIsClosed) {
    workspace.quit(editor);
    workspace.bringToFront(other);
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, WritesIntoNoFieldForPasswords) {
    field.hidesText = true;
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, PastesNothingWhereTheFocusIsStolenMidway) {
    field.feignsWrites = true;
    keys.hasKeyboard = [](ProcessId) { return false; };
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, PastesIntoNoTerminal) {
    field.feignsWrites = true;
    workspace.launch({editor, u"org.kde.konsole"_s, u"Konsole"_s});
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, PastesWhereAccessibilityTellsNothingAndACopyGivesTheOriginal) {
    accessibility.focusedName.reset();
    copyShortcut.text = "old";
    pasteOnPost();
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.content, "an new text");
    EXPECT_EQ(copyShortcut.copies, 1);
}

TEST_F(PasteOverTest, PastesWhereAnElementTellsNothingAndACopyGivesTheOriginal) {
    // As the cell of a sheet.
    field.content.reset();
    field.text.reset();
    field.range.reset();
    target.range.reset();
    copyShortcut.text = "old";
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_THAT(keys.posted(), SizeIs(1));
    EXPECT_EQ(pasteboard.held, users);

    copyShortcut.text = "else";
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    EXPECT_THAT(keys.posted(), SizeIs(1));
}

TEST_F(PasteOverTest, PastesNothingWhereACopyGivesAnotherText) {
    accessibility.focusedName.reset();
    copyShortcut.text = "else";
    EXPECT_EQ(replace(), Outcome::OnClipboard);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, LeavesAClipboardAloneThatCouldNotBeGivenBack) {
    field.feignsWrites = true;
    pasteboard.refusal = u"too much"_s;
    EXPECT_EQ(replace(), Outcome::NotReplaced);
    EXPECT_THAT(pasteboard.written, IsEmpty());
    EXPECT_THAT(keys.posted(), IsEmpty());
}

TEST_F(PasteOverTest, WaitsForACopyThatIsUnderWay) {
    field.feignsWrites = true;
    pasteOnPost();
    auto copying = std::make_optional(turns.takeTurn());
    const Running<Outcome> pasting(paster.replaceSelectedText("new", target, {}));
    for (int round = 0; round < 500; ++round) {
        Running<Outcome>::turnOnce();
        clock.advance(2ms);
    }
    EXPECT_THAT(pasteboard.written, IsEmpty());
    copying.reset();
    EXPECT_EQ(finish(pasting), Outcome::Replaced);
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(PasteOverTest, WaitsForAnApplicationThatPastesLate) {
    field.feignsWrites = true;
    pasteOnPost();
    const auto paste = keys.onPost;
    pasteboard.isTaken = false;
    keys.onPost = [this, paste](KeyChord chord, ProcessId process) {
        clock.after(1s, [this, paste, chord, process] {
            paste(chord, process);
            pasteboard.isTaken = true;
        });
    };
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(field.content, "an new text");
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(PasteOverTest, LeavesTheTextToAnApplicationThatMayStillAskForIt) {
    field.feignsWrites = true;
    pasteboard.isTaken = false;
    EXPECT_EQ(replace(), Outcome::Pending);
    EXPECT_EQ(pasteboard.held, pasteboardText("new"));
    EXPECT_THAT(keys.posted(), SizeIs(1));
}

// It would deal with the key when it wakes, and overwrite the clipboard.
TEST_F(PasteOverTest, AsksNothingOfAnApplicationThatDoesNotAnswer) {
    accessibility.isOneStep = false;
    accessibility.hangs = true;
    copyShortcut.text = "old";
    EXPECT_EQ(replace(), Outcome::Unanswered);
    EXPECT_EQ(copyShortcut.copies, 0);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, AsksNothingOfAnApplicationThatAnswersNoSmallQuestionEither) {
    accessibility.focusedName.reset();
    accessibility.silent = true;
    copyShortcut.text = "old";
    EXPECT_EQ(replace(), Outcome::Unanswered);
    EXPECT_EQ(copyShortcut.copies, 0);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, AWriteThatIsNotAnsweredMayHaveLanded) {
    accessibility.hangs = true;
    EXPECT_EQ(replace(), Outcome::Pending);
    expectOnClipboard("new");
}

TEST_F(PasteOverTest, TakesItForReplacedWhereTheTextIsThereThoughNobodyWasSeenToAskForIt) {
    field.feignsWrites = true;
    pasteOnPost();
    pasteboard.isTaken = false;
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(PasteOverTest, GivesTheKeyboardBackWheneverItIsStopped) {
    for (Clock::Duration until{}; until < 800ms; until += 10ms) {
        workspace.bringToFront(other);
        field.feignsWrites = true;
        std::stop_source stop;
        const Running<Outcome> running(paster.replaceSelectedText("new", target, stop.get_token()));
        for (Clock::Duration passed{}; passed < until; passed += 10ms) {
            Running<Outcome>::turnOnce();
            clock.advance(10ms);
        }
        stop.request_stop();
        (void)finish(running);
        ASSERT_EQ(workspace.frontmostProcess(), other) << "stopped after " << until.count();
    }
}

class PasteLogTest : public PasteOverTest {
  protected:
    [[nodiscard]] std::string pillLog() const {
        QFile file(folder.filePath("pills.log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }
    void expectAborted() {
        const Running<bool> pasting(isPasted());
        for (int round = 0; round < 2000 && !pasting.hasEnded(); ++round) {
            Running<bool>::turnOnce();
            clock.advance(2ms);
        }
        EXPECT_FALSE(pasting.result());
        EXPECT_THAT(pillLog(), testing::EndsWith("+0000 paste: aborted — source not frontmost or "
                                                 "Vorq still key\n"));
        EXPECT_EQ(pasteboard.held, users);
    }

  private:
    QCoro::Task<bool> isPasted() {
        const QString text = u"new"_s;
        const auto result = co_await paster.pasteOverSelection(text, target, {});
        co_return result.has_value();
    }
};

TEST_F(PasteLogTest, NamesAnApplicationThatNeverComesToTheFront) {
    workspace.bringToFront(other);
    workspace.holdBackActivations();
    expectAborted();
}

TEST_F(PasteLogTest, NamesASourceThatIsNotKnown) {
    target.source.reset();
    expectAborted();
}

TEST_F(PasteOverTest, KeepsWhatSomebodyElseWritesMeanwhile) {
    field.feignsWrites = true;
    pasteOnPost();
    const auto paste = keys.onPost;
    keys.onPost = [this, paste](KeyChord chord, ProcessId process) {
        paste(chord, process);
        pasteboard.writeAs(other, pasteboardText("of another"));
    };
    EXPECT_EQ(replace(), Outcome::Replaced);
    EXPECT_EQ(pasteboard.held, pasteboardText("of another"));
}

TEST_F(PasteOverTest, DoesNothingForNoTextOrWithoutTrust) {
    EXPECT_EQ(replace(QString()), Outcome::NotReplaced);
    accessibility.trusted = false;
    EXPECT_EQ(replace(), Outcome::NotReplaced);
    EXPECT_THAT(pasteboard.written, IsEmpty());
}

TEST_F(PasteOverTest, PutsBackWhatWasThereOnce) {
    field.feignsWrites = true;
    pasteOnPost();
    EXPECT_EQ(undo(), Outcome::NotReplaced);
    ASSERT_EQ(replace(), Outcome::Replaced);
    ASSERT_TRUE(paster.canUndo());
    EXPECT_EQ(undo(), Outcome::Replaced);
    EXPECT_EQ(field.content, "an old text");
    EXPECT_FALSE(paster.canUndo());
    EXPECT_EQ(undo(), Outcome::NotReplaced);
    EXPECT_EQ(pasteboard.held, users);
}

// "The big dog saw the big cat." is selected, and the second "big" of it is the target.
class PasteOverPartTest : public PasteOverTest {
  protected:
    PasteOverPartTest() {
        field.isEditor = true;
        field.content = u"So: The big dog saw the big cat. The end."_s;
        target.original = u"big"_s;
        target.range = TextRange{.location = 24, .length = 3};
        target.within = {.text = all, .range = {.location = 4, .length = all.size()}};
        selectAll();
    }

    void selectAll() { field.setSelectedTextRange(target.within->range); }
    void pasteOnPost() {
        keys.onPost = [this](KeyChord, ProcessId) {
            field.feignsWrites = false;
            field.setSelectedText(QString::fromUtf8(pasteboard.held.front().bytes));
        };
    }
    void expectUntouched() const {
        EXPECT_EQ(field.content, "So: The big dog saw the big cat. The end.");
        EXPECT_THAT(pasteboard.written, IsEmpty());
        EXPECT_THAT(keys.posted(), IsEmpty());
    }

    const QString all = u"The big dog saw the big cat."_s;
};

TEST_F(PasteOverPartTest, ReplacesThatPartAloneAndHasAllSelectedAgain) {
    EXPECT_EQ(replace(u"large"_s), Outcome::Replaced);
    EXPECT_EQ(field.content, "So: The big dog saw the large cat. The end.");
    EXPECT_EQ(field.text, "The big dog saw the large cat.");
    EXPECT_THAT(pasteboard.written, IsEmpty());
}

TEST_F(PasteOverPartTest, PastesItWhereAWriteTakesSeveralStepsToUndo) {
    accessibility.isOneStep = false;
    pasteOnPost();
    EXPECT_EQ(replace(u"large"_s), Outcome::Replaced);
    EXPECT_EQ(field.content, "So: The big dog saw the large cat. The end.");
    EXPECT_EQ(field.text, "The big dog saw the large cat.");
    EXPECT_EQ(pasteboard.held, users);
    EXPECT_THAT(keys.posted(), SizeIs(1));
}

TEST_F(PasteOverPartTest, IsTakenBack) {
    EXPECT_EQ(replace(u"large"_s), Outcome::Replaced);
    ASSERT_TRUE(paster.canUndo());
    EXPECT_EQ(undo(), Outcome::Replaced);
    EXPECT_EQ(field.content, "So: The big dog saw the big cat. The end.");
    EXPECT_EQ(field.text, all);
}

TEST_F(PasteOverPartTest, WhereTheWholeHasChangedNothingIsTouched) {
    field.content = u"So: The big dog saw the big cow. The end."_s;
    selectAll();
    EXPECT_EQ(replace(u"large"_s), Outcome::NotReplaced);
    EXPECT_EQ(field.content, "So: The big dog saw the big cow. The end.");
    EXPECT_THAT(pasteboard.written, IsEmpty());
    EXPECT_FALSE(paster.canUndo());
}

TEST_F(PasteOverPartTest, WhereSomethingElseIsSelectedNothingIsTouched) {
    field.setSelectedTextRange({.location = 33, .length = 3});
    EXPECT_EQ(replace(u"large"_s), Outcome::NotReplaced);
    expectUntouched();
    EXPECT_EQ(field.text, "The");
}

TEST_F(PasteOverPartTest, AProgramThatTellsNothingKeepsTheClipboard) {
    field.content.reset();
    field.text.reset();
    field.range.reset();
    field.isEditor = false;
    EXPECT_EQ(replace(u"large"_s), Outcome::NotReplaced);
    EXPECT_EQ(pasteboard.held, users);
    EXPECT_THAT(keys.posted(), IsEmpty());
}

TEST_F(PasteOverPartTest, AfterAFailureAllIsSelectedAgain) {
    field.feignsWrites = true;
    EXPECT_EQ(replace(u"large"_s), Outcome::NotReplaced);
    EXPECT_EQ(field.content, "So: The big dog saw the big cat. The end.");
    EXPECT_EQ(field.text, all);
    EXPECT_EQ(pasteboard.held, users);
}

TEST_F(PasteOverPartTest, APartThatDoesNotLieInTheWholeIsRefused) {
    for (const TextRange range :
         {TextRange{.location = 2, .length = 3}, TextRange{.location = 31, .length = 3},
          TextRange{.location = 25, .length = 3}, TextRange{.location = 24, .length = -1}}) {
        target.range = range;
        EXPECT_EQ(replace(u"large"_s), Outcome::NotReplaced) << range.location;
    }
    target.range.reset();
    EXPECT_EQ(replace(u"large"_s), Outcome::NotReplaced);
    expectUntouched();
}

} // namespace
} // namespace vorq
