#include "capture/notes/NoteDraftFlow.h"

#include "doubles/capture/CaptureFixture.h"
#include "platform/testing/ScriptedNotesBridge.h"

#include <random>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class NoteDraftFlowTest : public CaptureTest {
  protected:
    NoteDraftFlowTest() {
        QObject::connect(&flow, &NoteDraftFlow::captured, &flow,
                         [this](const QString& text) { captured += text; });
    }

    [[nodiscard]] Running<bool> startSave(const QString& bundleID = "org.xfce.mousepad",
                                          bool requireBrowser = false) {
        return Running<bool>(
            flow.saveNoteFromSelection(source, bundleID, requireBrowser, stop.get_token()));
    }
    bool save(const QString& bundleID = "org.xfce.mousepad", bool requireBrowser = false) {
        return startSave(bundleID, requireBrowser).result();
    }
    bool push() { return Running<bool>(flow.pushAppleNoteDraft(stop.get_token())).result(); }
    bool saveHeld() { return Running<bool>(flow.saveHeldText(stop.get_token())).result(); }

    [[nodiscard]] QStringList captureLog() const {
        QStringList lines;
        const QByteArray content = contentOf(folder.filePath("library/capture-debug.log"));
        for (const QByteArray& line : content.split('\n'))
            if (!line.isEmpty()) lines += QString::fromUtf8(line.mid(line.indexOf(' ') + 1));
        return lines;
    }

    ScriptedNotesBridge notes;
    NoteDraftFlow flow{{captures->notes, captures->snapshots, captures->gate, log, notes, "vorq"}};
    QStringList captured;
};

TEST_F(NoteDraftFlowTest, SavesWhatIsHighlighted) {
    select("Lighthouses warn ships.");
    EXPECT_TRUE(save());
    EXPECT_THAT(notes.notes,
                ElementsAre(Pair("Lighthouses warn ships.", "Lighthouses warn ships.")));
    EXPECT_THAT(captured, ElementsAre("Lighthouses warn ships."));
    EXPECT_THAT(captureLog(), ElementsAre("note-save chars=23 app=org.xfce.mousepad",
                                          "note-save Notes draft ok"));
    EXPECT_EQ(flow.failure(), "");
    EXPECT_EQ(flow.libraryMessage(), "");
}

TEST_F(NoteDraftFlowTest, ThreeSavesOneSealAndAnotherSaveGiveTwoNotes) {
    for (const QString text : {"first words", "second words", "third words"}) {
        select(text);
        EXPECT_TRUE(save());
    }
    EXPECT_TRUE(push());
    EXPECT_FALSE(push());
    EXPECT_EQ(flow.failure(), "There is no open note draft to push.");
    select("fourth words");
    EXPECT_TRUE(save());
    EXPECT_THAT(notes.notes,
                ElementsAre(Pair("first words", "first words\n\nsecond words\n\nthird words"),
                            Pair("fourth words", "fourth words")));
}

TEST_F(NoteDraftFlowTest, AnApplicationThatUsesTheKeyItselfIsPassedOver) {
    select("words of theirs");
    EXPECT_FALSE(save("com.microsoft.WordBeta"));
    EXPECT_THAT(notes.notes, IsEmpty());
    EXPECT_EQ(flow.libraryMessage(), "");
    EXPECT_EQ(flow.failure(), "Source uses the key itself, to save under another name.");
}

TEST_F(NoteDraftFlowTest, ABrowserIsNotPassedOverWhateverElseItsNameSays) {
    select("words of theirs");
    EXPECT_TRUE(save("com.microsoft.word.search"));
}

TEST_F(NoteDraftFlowTest, OnlyABrowserWillDoWhereOneIsAskedFor) {
    select("words of theirs");
    EXPECT_FALSE(save("org.xfce.mousepad", true));
    EXPECT_TRUE(save("org.mozilla.FIREFOX", true));
    EXPECT_TRUE(save("org.kde.falkon", true));
}

TEST_F(NoteDraftFlowTest, TheSourceIsLookedForWhereThePressDidNotTell) {
    select("words of theirs");
    identify("com.apple.TextEdit");
    for (const QString unknown : {"", "(none)", "vorq"})
        EXPECT_FALSE(save(unknown)) << qPrintable(unknown);
    identify("org.xfce.mousepad");
    EXPECT_TRUE(save("(none)"));
    EXPECT_EQ(captureLog().first(), "note-save chars=15 app=org.xfce.mousepad");
}

TEST_F(NoteDraftFlowTest, WithoutTrustTheUserIsToldWhatToTurnOn) {
    select("words of theirs");
    accessibility.trusted = false;
    EXPECT_FALSE(save());
    EXPECT_EQ(flow.libraryMessage(), "Enable Text capture in Settings to save highlighted notes.");
    EXPECT_EQ(flow.failure(), flow.libraryMessage());
    EXPECT_THAT(captureLog(), ElementsAre("note-save blocked — Accessibility off"));
    accessibility.trusted = true;
    EXPECT_TRUE(save());
    EXPECT_EQ(flow.libraryMessage(), "");
}

TEST_F(NoteDraftFlowTest, NothingHighlightedFailsAndSaysOfWhat) {
    focus();
    EXPECT_FALSE(save());
    EXPECT_EQ(flow.libraryMessage(), "");
    EXPECT_EQ(flow.failure(), "Nothing was found highlighted in Source.");
    EXPECT_THAT(captureLog(), ElementsAre("note-save empty from org.xfce.mousepad"));
}

TEST_F(NoteDraftFlowTest, SaysWhyNothingWasReadWhereItMayNotBe) {
    select("words of theirs");
    focus().hidesText = true;
    EXPECT_FALSE(save());
    EXPECT_EQ(flow.failure(), "Nothing was read from Source, where a field for passwords has the "
                              "keyboard.");
    focus().hidesText = false;
    identify("org.xfce.mousepad");
    settings.apply({{"vorq.capture.excludedApplications", QStringList{"org.xfce.mousepad"}}});
    EXPECT_FALSE(save());
    EXPECT_EQ(flow.failure(), "Nothing was read from Source, which is excluded.");
    EXPECT_THAT(notes.notes, IsEmpty());
}

TEST_F(NoteDraftFlowTest, TheLastResortIsTheCaptureWithAPlace) {
    // Comes only when it is asked for the third time.
    copyShortcut.onCopy = [this] {
        if (copyShortcut.copies == 3) copyShortcut.text = "late words";
    };
    EXPECT_TRUE(save());
    EXPECT_EQ(copyShortcut.copies, 3);
    EXPECT_THAT(captured, ElementsAre("late words"));
}

TEST_F(NoteDraftFlowTest, AFailureOfTheNotesApplicationIsItsOwnSentence) {
    select("words of theirs");
    notes.refusal = "No notes application.";
    EXPECT_FALSE(save());
    EXPECT_EQ(flow.libraryMessage(), "No notes application.");
    EXPECT_EQ(flow.failure(), "No notes application.");
    EXPECT_EQ(captureLog().last(), "note-save Notes failed: No notes application.");
    notes.refusal = "";
    EXPECT_FALSE(save());
    EXPECT_EQ(flow.failure(), "The notes application did not take the text.");
}

TEST_F(NoteDraftFlowTest, WhatReadsLikeASecretWaitsForTheUser) {
    highlight("tr0ub4dor&3Zx");
    EXPECT_FALSE(save());
    EXPECT_THAT(notes.notes, IsEmpty());
    EXPECT_THAT(captured, IsEmpty());
    EXPECT_TRUE(flow.holdsText());
    EXPECT_FALSE(flow.failure().contains("tr0ub4dor"));
    EXPECT_FALSE(captureLog().join(u' ').contains("tr0ub4dor"));

    EXPECT_TRUE(saveHeld());
    EXPECT_FALSE(flow.holdsText());
    EXPECT_THAT(notes.notes, ElementsAre(Pair("tr0ub4dor&3Zx", "tr0ub4dor&3Zx")));
    EXPECT_FALSE(saveHeld()) << "saved once";
}

TEST_F(NoteDraftFlowTest, AHeldTextThatCannotBeSavedGoesOnWaiting) {
    highlight("tr0ub4dor&3Zx");
    EXPECT_FALSE(save());
    notes.refusal = "No notes application.";
    EXPECT_FALSE(saveHeld());
    EXPECT_TRUE(flow.holdsText());
    flow.discardHeldText();
    EXPECT_FALSE(flow.holdsText());
    EXPECT_EQ(flow.failure(), "No notes application.");
}

TEST_F(NoteDraftFlowTest, OfADiscardedTextNothingIsSaidAnyMore) {
    highlight("tr0ub4dor&3Zx");
    EXPECT_FALSE(save());
    EXPECT_NE(flow.failure(), "");
    flow.discardHeldText();
    EXPECT_EQ(flow.failure(), "");
}

TEST_F(NoteDraftFlowTest, TheNextSaveTakesThePlaceOfAHeldText) {
    highlight("tr0ub4dor&3Zx");
    EXPECT_FALSE(save());
    select("plain words");
    EXPECT_TRUE(save());
    EXPECT_FALSE(flow.holdsText());
}

TEST_F(NoteDraftFlowTest, APressThatCapturesNothingLeavesAHeldText) {
    highlight("tr0ub4dor&3Zx");
    EXPECT_FALSE(save());
    primary.owner.reset();
    EXPECT_FALSE(save());
    EXPECT_EQ(flow.failure(), "Nothing was found highlighted in Source.");
    EXPECT_TRUE(flow.holdsText());
    EXPECT_TRUE(saveHeld());
    EXPECT_THAT(notes.notes, ElementsAre(Pair("tr0ub4dor&3Zx", "tr0ub4dor&3Zx")));
}

TEST_F(NoteDraftFlowTest, TwoQuickPressesShareANote) {
    select("first words");
    const Running<bool> first = startSave();
    const Running<bool> second = startSave();
    EXPECT_TRUE(first.result());
    EXPECT_TRUE(second.result());
    EXPECT_THAT(notes.notes, ElementsAre(Pair("first words", "first words\n\nfirst words")));
}

TEST_F(NoteDraftFlowTest, ASealThatComesDuringASaveComesAfterIt) {
    select("first words");
    notes.isHanging = true;
    const Running<bool> saving = startSave();
    const Running<bool> sealing(flow.pushAppleNoteDraft(stop.get_token()));
    while (notes.notes.empty())
        Running<bool>::turnOnce();
    EXPECT_FALSE(sealing.hasEnded());
    notes.release();
    EXPECT_TRUE(saving.result());
    EXPECT_TRUE(sealing.result());
    EXPECT_EQ(flow.draft().activeAppleNoteDraftID(), "");
}

TEST_F(NoteDraftFlowTest, WhateverIsPressedInWhateverOrderNoTextIsLost) {
    std::mt19937 random(3);
    for (int round = 0; round < 20; ++round) {
        notes.notes.clear();
        std::vector<Running<bool>> saves;
        std::vector<Running<bool>> others;
        for (int step = 0; step < 12; ++step) {
            select(u"words number %1"_s.arg(saves.size()));
            switch (random() % 4) {
            case 0:
                others.emplace_back(flow.pushAppleNoteDraft(stop.get_token()));
                break;
            case 1:
                Running<bool>::turnOnce();
                break;
            default:
                saves.push_back(startSave());
                // Each capture is of what is highlighted then.
                while (captured.size() < std::ssize(saves))
                    Running<bool>::turnOnce();
            }
        }
        for (const Running<bool>& saving : saves)
            EXPECT_TRUE(saving.result());
        for (const Running<bool>& sealing : others)
            (void)sealing.result();
        QString all;
        for (const auto& [title, body] : notes.notes)
            all += body + u'\n';
        qsizetype place = -1;
        for (std::size_t number = 0; number < saves.size(); ++number) {
            const qsizetype next = all.indexOf(u"words number %1"_s.arg(number), place + 1);
            EXPECT_GT(next, place) << "text " << number;
            place = next;
        }
        captured.clear();
        push(); // the next round begins a note of its own
    }
}

TEST_F(NoteDraftFlowTest, WhoLeavesDuringASaveLeavesNothingBehind) {
    select("first words");
    auto leaving = std::make_unique<NoteDraftFlow>(NoteDraftFlow::Services{
        captures->notes, captures->snapshots, captures->gate, log, notes, "vorq"});
    notes.isHanging = true;
    const Running<bool> first(
        leaving->saveNoteFromSelection(source, "org.xfce.mousepad", false, stop.get_token()));
    const Running<bool> second(
        leaving->saveNoteFromSelection(source, "org.xfce.mousepad", false, stop.get_token()));
    while (notes.notes.empty())
        Running<bool>::turnOnce();
    stop.request_stop();
    leaving.reset();
    notes.release();
    (void)first.result();
    EXPECT_FALSE(second.result());
    EXPECT_EQ(notes.notes.size(), 1U);
}

} // namespace
} // namespace vorq
