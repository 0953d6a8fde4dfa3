// A note of the library as the subject of the panel.

#include "doubles/backend/Awaiting.h"
#include "doubles/library/LibraryFixture.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class StudyNotesTest : public LibraryFixture {
  protected:
    StudyNotesTest() { setMigrated(); }

    // The notes application answers later.
    [[nodiscard]] bool says(const QString& text) {
        return turnUntil([&] { return !messages().empty() && last().text == text; });
    }
    [[nodiscard]] StudyNotes& notes() { return state().studyNotes(); }
    [[nodiscard]] StudyContext& study() { return state().study(); }
    [[nodiscard]] SavedNote stored(const QUuid& id) const {
        for (const SavedNote& note : store().loadNotes())
            if (note.id == id) return note;
        return {};
    }

    void converse(const QString& prompt, const QString& answer) {
        submit(prompt);
        reply(exchange(), answer);
        advance(10s);
    }

    // Who speaks in the chat that was kept last.
    [[nodiscard]] QStringList kindsInChat() {
        QStringList kinds;
        const SavedChat chat = store().loadChats().front();
        for (const SavedChatMessage& message : chat.messages)
            kinds += message.isNotice.value_or(false) ? u"notice"_s : message.role;
        return kinds;
    }

    void answerWithCards(int count) {
        QVariantList cards;
        for (int index = 1; index <= count; ++index)
            cards += QVariantMap{{"front", u"Q%1"_s.arg(index)}, {"back", u"A%1"_s.arg(index)}};
        exchange().respond(200, json({{"flashcards", cards}}));
        m_clock.settle();
    }
};

TEST_F(StudyNotesTest, TheNewestNoteIsLoaded) {
    keepNote("older");
    const SavedNote note = keepNote("  Seed ", " Body\nof the note ");
    study().setLastStudyResearch("before");
    QStringList told;
    QObject::connect(&panel(), &PanelConversation::vorqShowPanel, &panel(),
                     [&told] { told += "show"; });
    QObject::connect(&panel(), &PanelConversation::vorqFocusPrompt, &panel(),
                     [&told] { told += "focus"; });
    EXPECT_TRUE(notes().recallLatestNoteIntoPanel());
    EXPECT_EQ(study().activeStudyNoteID(), note.id);
    EXPECT_EQ(study().lastStudyResearch(), "");
    EXPECT_EQ(study().studyNoteOriginalBody(), "Seed");
    EXPECT_EQ(panel().highlightedText(), "Body\nof the note");
    EXPECT_THAT(told, ElementsAre("show", "focus"));
    EXPECT_EQ(state().promptPlaceholder(), "Ask about this note…");
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(StudyNotesTest, ANoteWithoutASeedIsItsBody) {
    keepNote(" ", "Body");
    notes().recallLatestNoteIntoPanel();
    EXPECT_EQ(study().studyNoteOriginalBody(), "Body");
}

TEST_F(StudyNotesTest, WithoutNotesNothingIsLoaded) {
    EXPECT_FALSE(notes().recallLatestNoteIntoPanel());
    EXPECT_EQ(study().activeStudyNoteID(), std::nullopt);
    EXPECT_EQ(last().text, "No notes yet. Highlight text in a browser and press ⌘⇧S to save one.");
}

TEST_F(StudyNotesTest, ARecallSeesWhatOthersHaveSavedMeanwhile) {
    (void)state().library();
    const SavedNote note = keepNote("fresh");
    EXPECT_TRUE(notes().recallLatestNoteIntoPanel());
    EXPECT_EQ(study().activeStudyNoteID(), note.id);
}

TEST_F(StudyNotesTest, ATurnGoesOutWithTheNoteAndItsReplyIsRemembered) {
    keepNote("Seed", "Rivers carry silt.");
    notes().recallLatestNoteIntoPanel();
    submit("Why?");
    EXPECT_EQ(exchange().json()["prompt"],
              "The student is studying a saved note. Use the note / attachments as "
              "context.\nStudent request: Why?");
    EXPECT_EQ(exchange().json()["selectedText"], "Rivers carry silt.") << "once";
    reply(exchange(), "Because they flow.");
    EXPECT_EQ(study().lastStudyResearch(), "Because they flow.");
}

TEST_F(StudyNotesTest, ClearingTheNoteKeepsTheHighlightedText) {
    keepNote("Seed");
    notes().recallLatestNoteIntoPanel();
    study().setLastStudyResearch("research");
    study().clearActiveStudyNote();
    EXPECT_EQ(study().activeStudyNoteID(), std::nullopt);
    EXPECT_EQ(study().studyNoteOriginalBody(), "");
    EXPECT_EQ(study().lastStudyResearch(), "");
    EXPECT_EQ(panel().highlightedText(), "Seed");
}

TEST_F(StudyNotesTest, ResearchIsAddedBelowTheNote) {
    const SavedNote note = keepNote("Rivers carry silt.");
    notes().recallLatestNoteIntoPanel();
    converse("Why?", "Because they flow.");
    submit("save research");
    EXPECT_EQ(last().text, "Saved — original note plus the update.");
    const SavedNote after = stored(note.id);
    EXPECT_EQ(after.thoughts, "Rivers carry silt.\n\nBecause they flow.");
    EXPECT_TRUE(after.thoughtsRTF.has_value());
    EXPECT_EQ(after.text, "Rivers carry silt.") << "a human title is kept";
    EXPECT_EQ(panel().highlightedText(), after.thoughts);
    EXPECT_EQ(m_transport.count(), 1U);
}

TEST_F(StudyNotesTest, ASecondSaveStartsFromTheNoteAsItWasLoaded) {
    const SavedNote note = keepNote("Rivers carry silt.");
    notes().recallLatestNoteIntoPanel();
    study().setLastStudyResearch("First.");
    EXPECT_TRUE(notes().saveStudyResearchToActiveNote());
    EXPECT_EQ(study().studyNoteOriginalBody(), "Rivers carry silt.");
    const QString after = stored(note.id).thoughts;
    EXPECT_TRUE(after.startsWith("Rivers carry silt.\n\n")) << qPrintable(after);
    EXPECT_TRUE(after.endsWith("First."));
    study().setLastStudyResearch("Second.");
    EXPECT_TRUE(notes().saveStudyResearchToActiveNote());
    EXPECT_EQ(study().studyNoteOriginalBody(), "Rivers carry silt.");
    EXPECT_EQ(stored(note.id).thoughts, "Rivers carry silt.\n\nFirst.\n\nSecond.");
}

TEST_F(StudyNotesTest, ResearchThatRepeatsTheNoteReplacesIt) {
    const SavedNote note = keepNote("Rivers carry silt.");
    notes().recallLatestNoteIntoPanel();
    for (const QString research : {"Rivers carry silt.", "So: Rivers carry silt. And sand."}) {
        study().setLastStudyResearch(research);
        EXPECT_TRUE(notes().saveStudyResearchToActiveNote());
        EXPECT_EQ(stored(note.id).thoughts, research);
    }
}

TEST_F(StudyNotesTest, ASeedOfMarkdownGetsTheTitleOfTheResult) {
    const SavedNote note = keepNote("# Plan");
    notes().recallLatestNoteIntoPanel();
    study().setLastStudyResearch("More on # Plan");
    EXPECT_TRUE(notes().saveStudyResearchToActiveNote());
    EXPECT_EQ(stored(note.id).text, "More on # Plan");
}

TEST_F(StudyNotesTest, WithoutResearchTheLatestReplyIsSaved) {
    const SavedNote note = keepNote("Rivers");
    converse("Explain", "They flow.");
    notes().recallLatestNoteIntoPanel();
    EXPECT_TRUE(notes().saveStudyResearchToActiveNote());
    EXPECT_TRUE(stored(note.id).thoughts.endsWith("They flow."));
}

TEST_F(StudyNotesTest, WithoutAnyReplyThereIsNothingToFoldIn) {
    keepNote("Rivers");
    notes().recallLatestNoteIntoPanel();
    EXPECT_FALSE(notes().saveStudyResearchToActiveNote());
    EXPECT_EQ(last().text, "Nothing to save yet — ask me to research or explain the note first.");
}

TEST_F(StudyNotesTest, WithoutANoteTheReplyGoesToTheUsersNotes) {
    EXPECT_FALSE(notes().saveStudyResearchToActiveNote());
    EXPECT_EQ(last().text, "Nothing to save yet — ask me something first.");
    converse("Explain", "They flow.");
    EXPECT_TRUE(notes().saveStudyResearchToActiveNote());
    EXPECT_TRUE(says("Saved to Notes."));
    EXPECT_THAT(m_notesApplication.notes, ElementsAre(Pair("They flow.", "They flow.")));
}

TEST_F(StudyNotesTest, TheGreetingIsNoReplyToSave) {
    panel().ensurePanelGreeting();
    advance(10s);
    submit("save notes");
    EXPECT_EQ(last().text, "Nothing to save yet — ask me something first.");
    EXPECT_THAT(m_notesApplication.notes, IsEmpty());
}

TEST_F(StudyNotesTest, ASaveThatIsAskedForAgainDoesNotSaveWhatWasSaidToTheFirst) {
    converse("Explain", "They flow.");
    m_notesApplication.refusal = "Not allowed.";
    submit("save to notes");
    EXPECT_TRUE(says("Not allowed."));
    m_notesApplication.refusal.reset();
    submit("save to notes");
    EXPECT_TRUE(says("Saved to Notes."));
    EXPECT_THAT(m_notesApplication.notes, ElementsAre(Pair("They flow.", "They flow.")));
    submit("save chat");
    const SavedNote note = keepNote("Rivers");
    submit("open notes");
    submit("save research");
    EXPECT_TRUE(stored(note.id).thoughts.endsWith("They flow."));
}

TEST_F(StudyNotesTest, ADeletedNoteCountsAsNone) {
    const SavedNote note = keepNote("Rivers");
    notes().recallLatestNoteIntoPanel();
    state().library().deleteSavedNote(note);
    EXPECT_EQ(study().activeStudyNoteID(), note.id);
    EXPECT_EQ(notes().activeStudyNote(), nullptr);
    study().setLastStudyResearch("research");
    EXPECT_TRUE(notes().saveStudyResearchToActiveNote());
    EXPECT_TRUE(says("Saved to Notes."));
    EXPECT_THAT(m_notesApplication.notes, SizeIs(1));
    submit("Why?");
    EXPECT_TRUE(exchange().json()["prompt"].toString().startsWith("The student is studying"));
}

TEST_F(StudyNotesTest, FlashcardsOfTheNewestNoteAreMadeKeptAndShown) {
    keepNote("older");
    const SavedNote note = keepNote("Seed", "Rivers carry silt.");
    submit("make flashcards");
    EXPECT_THAT(texts(), ElementsAre("make flashcards", "Working..."));
    EXPECT_TRUE(last().isWorking);
    EXPECT_EQ(study().activeStudyNoteID(), note.id);
    EXPECT_EQ(study().studyNoteOriginalBody(), "") << "nothing else is loaded";
    advance(650ms);
    EXPECT_EQ(status(), VorqWorkStatus::Analyzing);
    EXPECT_EQ(exchange().path(), "/ai/flashcards");
    EXPECT_EQ(exchange().json(), (QVariantMap{{"text", "Rivers carry silt."}}));
    EXPECT_EQ(exchange().header("Authorization"), "Bearer token");
    EXPECT_TRUE(panel().isPanelTurnInFlight());

    answerWithCards(2);
    EXPECT_EQ(status(), VorqWorkStatus::Finishing);
    EXPECT_EQ(last().text, "Working...");
    ASSERT_THAT(stored(note.id).flashcards, SizeIs(2));
    EXPECT_EQ(stored(note.id).flashcards[1].front, "Q2");
    EXPECT_EQ(stored(note.id).flashcards[1].back, "A2");
    advance(119ms);
    EXPECT_EQ(last().text, "Working...");
    advance(1ms);
    EXPECT_TRUE(last().isTyping);
    advance(10s);
    EXPECT_THAT(messages(), SizeIs(2)) << "the placeholder takes the reply";
    EXPECT_EQ(last().text,
              "Here are 2 flashcards — saved on your note.\n\n"
              "**1.** Q1\n→ A1\n\n"
              "**2.** Q2\n→ A2\n\n"
              "Say “quiz me” anytime to regenerate, or open the note in Hub to review.");
    EXPECT_FALSE(panel().isPanelTurnInFlight());
}

TEST_F(StudyNotesTest, TheAnnouncementOfFlashcardsIsNoReplyToSave) {
    const SavedNote note = keepNote("Rivers", "Rivers carry silt.");
    submit("make flashcards");
    answerWithCards(2);
    advance(10s);
    submit("save notes");
    EXPECT_EQ(last().text, "Nothing to save yet — ask me to research or explain the note first.");
    EXPECT_EQ(stored(note.id).thoughts, "Rivers carry silt.");
    EXPECT_EQ(stored(note.id).thoughtsRTF, std::nullopt);
    EXPECT_THAT(stored(note.id).flashcards, SizeIs(2));
}

TEST_F(StudyNotesTest, NeitherIsARefusalOrAFailureOfFlashcards) {
    const SavedNote note = keepNote("Rivers");
    submit("flashcards");
    answerWithCards(0);
    submit("flashcards");
    refuse(exchange(), 500, R"({"error":"Out of paper."})");
    panel().retry(last().id);
    m_clock.settle();
    refuse(exchange(), 500, R"({"error":"Still out of paper."})");
    EXPECT_EQ(last().text, "Still out of paper.");
    submit("save notes");
    EXPECT_EQ(last().text, "Nothing to save yet — ask me to research or explain the note first.");
    EXPECT_EQ(stored(note.id).thoughts, "");
}

TEST_F(StudyNotesTest, TheSentenceOfAFailedTurnIsNoReplyToSave) {
    const SavedNote note = keepNote("Rivers", "Rivers carry silt.");
    submit("Explain");
    refuse(exchange(), 500, R"({"error":"Out of paper."})");
    EXPECT_EQ(last().text, "Out of paper.");
    submit("save notes");
    EXPECT_EQ(last().text, "Nothing to save yet — ask me something first.");
    EXPECT_THAT(m_notesApplication.notes, IsEmpty());

    submit("open notes");
    submit("Why?");
    refuse(exchange(), 500, R"({"error":"Out of ink."})");
    EXPECT_EQ(study().lastStudyResearch(), "");
    submit("save notes");
    EXPECT_EQ(last().text, "Nothing to save yet — ask me to research or explain the note first.");
    EXPECT_EQ(stored(note.id).thoughts, "Rivers carry silt.");
}

TEST_F(StudyNotesTest, AFailedTurnLeavesTheReplyBeforeItToSave) {
    const SavedNote note = keepNote("Rivers carry silt.");
    submit("open notes");
    converse("Why?", "Because they flow.");
    submit("And lakes?");
    refuse(exchange(), 500);
    submit("save notes");
    EXPECT_EQ(stored(note.id).thoughts, "Rivers carry silt.\n\nBecause they flow.");
}

TEST_F(StudyNotesTest, AReplyThatCameAtTheSecondTryIsSaved) {
    const SavedNote note = keepNote("Rivers carry silt.");
    submit("open notes");
    submit("Why?");
    refuse(exchange(), 500);
    panel().retry(last().id);
    m_clock.settle();
    refuse(exchange(), 500);
    panel().retry(last().id);
    m_clock.settle();
    reply(exchange(), "Because they flow.");
    advance(10s);
    submit("save chat");
    EXPECT_THAT(kindsInChat(), ElementsAre("user", "user", "assistant"));
    submit("save notes");
    EXPECT_EQ(stored(note.id).thoughts, "Rivers carry silt.\n\nBecause they flow.");
}

TEST_F(StudyNotesTest, WhatWasStoppedAtTheSecondTryIsAReplyToSave) {
    submit("Explain");
    refuse(exchange(), 500);
    panel().retry(last().id);
    m_clock.settle();
    exchange().begin();
    sendText(exchange(), "They flow.\n\nAnd");
    panel().stopPanelResponse();
    submit("save notes");
    EXPECT_TRUE(says("Saved to Notes."));
    ASSERT_THAT(m_notesApplication.notes, SizeIs(1));
    EXPECT_EQ(m_notesApplication.notes[0].second, "They flow.");
}

TEST_F(StudyNotesTest, AChatMarksTheSentenceOfAFailedTurn) {
    converse("Explain", "They flow.");
    submit("More");
    refuse(exchange(), 500, R"({"error":"Out of paper."})");
    submit("save chat");
    EXPECT_THAT(kindsInChat(), ElementsAre("user", "assistant", "user", "notice"));
    state().panelChats().loadPanelChatFromHistory(
        state().library().savedChats().records().front().id);
    submit("save notes");
    EXPECT_TRUE(says("Saved to Notes."));
    EXPECT_THAT(m_notesApplication.notes, ElementsAre(Pair("They flow.", "They flow.")));
}

TEST_F(StudyNotesTest, AReplyIsAddedBelowANoteThatOnlyCardsWereMadeOf) {
    const SavedNote note = keepNote("Rivers", "Rivers carry silt.");
    submit("make flashcards");
    answerWithCards(2);
    advance(10s);
    converse("Why?", "Because they flow.");
    submit("save notes");
    EXPECT_EQ(last().text, "Saved — original note plus the update.");
    EXPECT_EQ(stored(note.id).thoughts, "Rivers carry silt.\n\nBecause they flow.");
}

TEST_F(StudyNotesTest, ANoteIsNotGivenTheBodyOfOneThatWasLoadedBefore) {
    const SavedNote note = keepNote("Lakes", "Lakes lie still.");
    const SavedNote loaded = keepNote("Rivers", "Rivers carry silt.");
    submit("open notes");
    state().library().deleteSavedNote(loaded);
    submit("make flashcards");
    answerWithCards(1);
    advance(10s);
    converse("Why?", "Because of the ground.");
    submit("save notes");
    EXPECT_EQ(stored(note.id).thoughts, "Lakes lie still.\n\nBecause of the ground.");
}

TEST_F(StudyNotesTest, AReplyThatNamesTheNoteTakesNothingFromItsBody) {
    const SavedNote note = keepNote("Rivers", "They carry silt.\nThey build deltas.");
    submit("open notes");
    converse("Why?", "Rivers flow downhill.");
    submit("save notes");
    EXPECT_EQ(stored(note.id).thoughts,
              "They carry silt.\nThey build deltas.\n\nRivers flow downhill.");
}

TEST_F(StudyNotesTest, WhatWasWrittenSinceTheNoteWasLoadedIsKept) {
    const SavedNote note = keepNote("Rivers carry silt.");
    submit("open notes");
    state().library().updateNoteThoughts(note.id, "My own words.", std::nullopt);
    converse("Why?", "Rivers carry silt. Because they flow.");
    submit("save notes");
    EXPECT_EQ(stored(note.id).thoughts, "My own words.\n\nRivers carry silt. Because they flow.");
}

TEST_F(StudyNotesTest, TheLoadedNoteGoesBeforeTheNewestAndNewCardsReplaceOldOnes) {
    const SavedNote older = keepNote("older");
    keepNote("newer");
    notes().loadNoteIntoStudyContext(older);
    for (const int count : {3, 1}) {
        notes().makeFlashcardsForActiveNote();
        m_clock.settle();
        EXPECT_EQ(exchange().json()["text"], "older");
        answerWithCards(count);
        advance(10s);
        EXPECT_THAT(stored(older.id).flashcards, SizeIs(count));
    }
}

TEST_F(StudyNotesTest, FlashcardsNeedANoteWithAText) {
    submit("flashcards");
    EXPECT_EQ(last().text, "No note loaded. Say “open notes” first, or save a highlight with ⌘⇧S.");
    EXPECT_EQ(study().activeStudyNoteID(), std::nullopt);
    const SavedNote note = keepNote(" ");
    submit("flashcards");
    EXPECT_EQ(last().text, "That note is empty — nothing to make flashcards from.");
    EXPECT_EQ(study().activeStudyNoteID(), note.id);
    EXPECT_EQ(m_transport.count(), 0U);
}

TEST_F(StudyNotesTest, WithoutCardsTheNoteKeepsItsOwn) {
    SavedNote note = keepNote("Rivers");
    state().library().updateNoteFlashcards(note.id, {{QUuid::createUuid(), "a", "b"}});
    submit("flashcards");
    answerWithCards(0);
    EXPECT_EQ(last().text, "I couldn’t build flashcards from that note. Try enriching it first.");
    EXPECT_THAT(stored(note.id).flashcards, SizeIs(1));
    EXPECT_FALSE(panel().isPanelTurnInFlight());
}

TEST_F(StudyNotesTest, AFailureIsSaidInPlaceOfTheCards) {
    keepNote("Rivers");
    submit("flashcards");
    refuse(exchange(), 500, R"({"error":"Out of paper."})");
    EXPECT_EQ(last().text, "Out of paper.");
    EXPECT_FALSE(last().isWorking);
    EXPECT_FALSE(panel().isPanelTurnInFlight());
}

TEST_F(StudyNotesTest, ARefusedTokenIsRefreshedOnce) {
    m_defaults.setString("vorq.session.refreshToken", "refresh");
    restart();
    refuse(exchange(), 500); // the refresh of the launch
    keepNote("Rivers");
    submit("flashcards");
    refuse(exchange(), 401);
    EXPECT_EQ(exchange().path(), "/auth/refresh");
    exchange().respond(200, json({{"signedIn", true},
                                  {"token", "second"},
                                  {"refreshToken", "next"},
                                  {"email", "a@b.c"}}));
    m_clock.settle();
    EXPECT_EQ(exchange().path(), "/ai/flashcards");
    EXPECT_EQ(exchange().header("Authorization"), "Bearer second");
}

TEST_F(StudyNotesTest, StoppingLeavesNoPlaceholderAndNoCards) {
    const SavedNote note = keepNote("Rivers");
    submit("flashcards");
    panel().stopPanelResponse();
    m_clock.settle();
    EXPECT_TRUE(exchange().isAbandoned());
    EXPECT_THAT(texts(), ElementsAre("flashcards"));
    advance(10s);
    EXPECT_THAT(texts(), ElementsAre("flashcards"));
    EXPECT_THAT(stored(note.id).flashcards, IsEmpty());
}

TEST_F(StudyNotesTest, AskingTwiceLeavesOnePlaceholder) {
    keepNote("Rivers");
    submit("flashcards");
    submit("flashcards");
    EXPECT_THAT(texts(), ElementsAre("flashcards", "flashcards", "Working..."));
    answerWithCards(1);
    advance(10s);
    EXPECT_FALSE(panel().isPanelTurnInFlight());
}

TEST_F(StudyNotesTest, CardsTakeThePlaceOfARunningTurn) {
    keepNote("Rivers");
    submit("Explain");
    const ScriptedExchange explained = exchange();
    submit("flashcards");
    EXPECT_TRUE(explained.isAbandoned());
    EXPECT_THAT(texts(), ElementsAre("Explain", "flashcards", "Working..."));
    submit("Next");
    answerWithCards(1);
    advance(10s);
    EXPECT_EQ(exchange().json()["prompt"].toString().right(4), "Next") << "the queue goes on";
}

TEST_F(StudyNotesTest, AQueuedTurnFollowsAShortRefusal) {
    keepNote("Rivers");
    submit("flashcards");
    submit("Next");
    EXPECT_EQ(panel().queuedTurns(), 1U);
    answerWithCards(0);
    EXPECT_EQ(panel().queuedTurns(), 0U);
    EXPECT_EQ(exchange().path(), "/ai/prompt");
}

TEST_F(StudyNotesTest, QuittingInTheMidstOfItIsNoHarm) {
    keepNote("Rivers");
    submit("flashcards");
    const ScriptedExchange asked = exchange();
    restart();
    EXPECT_TRUE(asked.isAbandoned());
}

} // namespace
} // namespace vorq
