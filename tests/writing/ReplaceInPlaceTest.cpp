// A session over the paste itself, in an application whose text the test sees.

#include "capture/selection/CaptureLog.h"
#include "doubles/capture/CaptureFixture.h"
#include "doubles/writing/WritingFixture.h"
#include "platform/testing/ScriptedKeyPoster.h"
#include "platform/testing/ScriptedPasteboard.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

class ReplaceInPlaceTest : public WritingFixture {
  protected:
    static constexpr ProcessId editor = 42;

    ReplaceInPlaceTest() {
        workspace.launch({editor, u"mousepad"_s, u"Mousepad"_s});
        workspace.bringToFront(editor);
        pasteboard.writeAs(43, users);
        // It replaces what is selected by what the clipboard holds.
        accessibility.isOneStep = false;
        keys.onPost = [this](KeyChord, ProcessId) {
            const QString pasted = QString::fromUtf8(pasteboard.held.front().bytes);
            const TextRange selected = field.range.value_or(TextRange());
            field.content->replace(selected.location, selected.length, pasted);
            field.text.reset();
            field.range = TextRange{.location = selected.location + pasted.size(), .length = 0};
        };
        accessibility.focusedName = u"field"_s;
        field.content = "an old text here";
        field.text = "old text";
        field.range = TextRange{.location = 3, .length = 8};
        selection.originalText = "old text";
        selection.selectedRange = field.range;
        usedReplacer = &over;
        open();
        suggest("shorter", "New.");
    }

    void turnUntil(const std::function<bool()>& isTrue) {
        for (const QDeadlineTimer guard(30'000); !isTrue();) {
            ASSERT_FALSE(guard.hasExpired());
            Running<QString>::turnOnce();
            clock.advance(2ms);
        }
    }
    void finish() {
        turnUntil([this] { return !writing->isReplacing(); });
    }
    void replace() {
        say("replace it");
        finish();
    }

    const PasteboardContents users = pasteboardText("user's");
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
    PasteOverReplacer over{paster};
};

TEST_F(ReplaceInPlaceTest, TheSuggestionTakesThePlaceOfTheSelection) {
    replace();
    EXPECT_EQ(field.content, "an New here");
    EXPECT_EQ(heard.back(), "replaced");
    EXPECT_EQ(pasteboard.held, users);
    EXPECT_TRUE(writing->canUndo());
}

TEST_F(ReplaceInPlaceTest, UndoPutsTheOriginalBack) {
    replace();
    writing->undoReplace();
    finish();
    EXPECT_EQ(field.content, "an old text here");
    EXPECT_EQ(heard.back(), "undone");
    EXPECT_FALSE(writing->canUndo());
    replace();
    EXPECT_EQ(field.content, "an New here");
}

TEST_F(ReplaceInPlaceTest, AChangedTargetIsLeftAndTheSuggestionIsOnTheClipboard) {
    field.content = "an odd text here";
    field.text.reset();
    field.range.reset();
    replace();
    EXPECT_EQ(field.content, "an odd text here");
    EXPECT_EQ(pasteboard.held, pasteboardText("New"));
    EXPECT_TRUE(writing->replaceFailed());
    EXPECT_EQ(error(), "The selection has changed, so nothing was replaced. The suggestion is on "
                       "the clipboard.");
    EXPECT_EQ(suggestion(), "New.");
}

TEST_F(ReplaceInPlaceTest, AnUndoOfWhatWasChangedSinceIsRefused) {
    replace();
    field.content = "an edited here";
    field.text.reset();
    field.range.reset();
    writing->undoReplace();
    finish();
    EXPECT_EQ(field.content, "an edited here");
    EXPECT_EQ(pasteboard.held, pasteboardText("old text"));
    EXPECT_EQ(error(), "The text has changed since, so it was left as it is. Your original is on "
                       "the clipboard.");
}

TEST_F(ReplaceInPlaceTest, AnotherSessionCannotUndoTheOneBefore) {
    replace();
    selection.originalText = "here";
    open();
    EXPECT_FALSE(writing->canUndo());
    writing->undoReplace();
    finish();
    EXPECT_EQ(field.content, "an New here");
}

TEST_F(ReplaceInPlaceTest, AReplacementGoesOnWhenItsSessionIsGone) {
    writing->replaceInApp();
    clock.advance(60ms);
    writing.reset();
    // It can be taken back once it has ended.
    turnUntil([this] { return paster.canUndo(); });
    EXPECT_EQ(field.content, "an New here");
    EXPECT_EQ(pasteboard.held, users);
}

} // namespace
} // namespace vorq
