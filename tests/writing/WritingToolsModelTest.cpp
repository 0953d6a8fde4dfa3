#include "doubles/writing/WritingFixture.h"
#include "support/text/Text.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using Event = WritingToolsInteraction::Kind::Event;

class WritingToolsModelTest : public WritingFixture {
  protected:
    [[nodiscard]] std::vector<Event> events() const {
        std::vector<Event> events;
        for (const WritingToolsInteraction& interaction : writing->log().interactions())
            events.push_back(interaction.kind.event);
        return events;
    }

    QObject m_context;
};

TEST_F(WritingToolsModelTest, AnInstructionGoesToTheBackendWithTheSelection) {
    writing->setDraftPrompt("  make it warmer \n");
    EXPECT_TRUE(writing->canSubmit());
    writing->submitPrompt();
    EXPECT_EQ(writing->draftPrompt(), "");
    EXPECT_FALSE(writing->canSubmit());
    EXPECT_TRUE(writing->isWorking());
    EXPECT_THAT(heard, ElementsAre("content"));
    clock.settle();
    ASSERT_EQ(transport.count(), 1U);
    EXPECT_EQ(transport.last().path(), "/ai/prompt");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t1");
    EXPECT_EQ(transport.last().request().timeout, 60s);
    QVariantMap sentBody = body();
    EXPECT_TRUE(sentBody.take("prompt").toString().contains("Writer ask: make it warmer\n"));
    EXPECT_EQ(sentBody, (QVariantMap{{"selectedText", "The old sentence."},
                                     {"screenDataUrl", ""},
                                     {"deepResearch", false},
                                     {"skipUserPreferences", true},
                                     {"forceLearn", false}}));
    EXPECT_EQ(writing->lastInstruction(), "make it warmer");
    EXPECT_THAT(events(), ElementsAre(Event::Opened, Event::Asked));
}

TEST_F(WritingToolsModelTest, ThePreferredModelIsThatOfTheMomentOfSending) {
    writing->setDraftPrompt("shorter");
    writing->submitPrompt();
    model.selectPreferredAIModel("anthropic/claude-sonnet-latest");
    clock.settle();
    QString asked;
    for (std::size_t i = 0; i < transport.count(); ++i)
        if (transport.at(i).path() == "/ai/prompt")
            asked = transport.at(i).json()["preferredModel"].toString();
    EXPECT_EQ(asked, "anthropic/claude-sonnet-latest");
}

TEST_F(WritingToolsModelTest, TheInstructionStandsInTheSessionToo) {
    say("shorter");
    EXPECT_TRUE(sentPrompt().contains("] opened Writing Tools on the highlighted selection\n"));
    EXPECT_TRUE(sentPrompt().contains("] writer asked: shorter\nReturn ONE"));
}

TEST_F(WritingToolsModelTest, ARewriteBecomesTheSuggestion) {
    say("shorter");
    heard.clear();
    answer("1. The sentence. — a shorter take");
    EXPECT_EQ(suggestion(), "The sentence.");
    EXPECT_FALSE(writing->isWorking());
    EXPECT_EQ(writing->errorMessage(), std::nullopt);
    EXPECT_EQ(writing->promptFocusToken(), 1);
    EXPECT_THAT(heard, ElementsAre("content", "focus"));
}

TEST_F(WritingToolsModelTest, ASecondInstructionIsOnTheVersionOnShow) {
    suggest("shorter", "The sentence.");
    say("warmer");
    EXPECT_EQ(suggestion(), "");
    EXPECT_TRUE(sentPrompt().contains(
        "apply the direction to this one:\nThe sentence.\nSession interactions"));
    EXPECT_EQ(writing->lastInstruction(), "warmer");
}

TEST_F(WritingToolsModelTest, AnActionAsksInItsOwnWordsAndIsInUseUntilTheWriterAsks) {
    writing->setDraftPrompt("unsent");
    writing->runAction(WritingToolAction::Shorter);
    clock.settle();
    EXPECT_EQ(writing->activeAction(), WritingToolAction::Shorter);
    EXPECT_TRUE(sentPrompt().contains("Writer ask: Make it shorter\n"));
    EXPECT_EQ(writing->lastInstruction(), "Make it shorter");
    EXPECT_EQ(writing->draftPrompt(), "unsent");
    answer("Short.");
    EXPECT_EQ(suggestion(), "Short.");
    say("warmer");
    EXPECT_EQ(writing->activeAction(), std::nullopt);
}

TEST_F(WritingToolsModelTest, AgainAsksForAnotherTakeAndHonoursTheInstruction) {
    suggest("shorter", "One.");
    say("Again!");
    // The take on show joins the rejected ones after the prompt was made.
    EXPECT_FALSE(sentPrompt().contains("do not repeat"));
    EXPECT_TRUE(sentPrompt().contains("Still honor the writer's earlier direction: shorter\n"));
    EXPECT_TRUE(sentPrompt().contains("] writer rejected the on-screen take"));
    EXPECT_EQ(writing->lastInstruction(), "shorter");
    answer("Two.");
    say("no");
    EXPECT_TRUE(sentPrompt().contains("do not repeat or lightly reword these:\n1. One.\nSession"));
    EXPECT_THAT(writing->takes().rejected(), ElementsAre("One.", "Two."));
    EXPECT_THAT(events(),
                ElementsAre(Event::Opened, Event::Asked, Event::RejectedTake, Event::RejectedTake));
}

TEST_F(WritingToolsModelTest, OfRejectedTakesTheLastFourStayEachOnce) {
    for (const char* take : {"One.", "Two.", "Two.", "Three.", "Four.", "Five."})
        suggest("again", take);
    say("again");
    EXPECT_THAT(writing->takes().rejected(), ElementsAre("Two.", "Three.", "Four.", "Five."));
}

TEST_F(WritingToolsModelTest, SendingGoesToThePanelAndNotToTheBackend) {
    say("open vorq");
    EXPECT_THAT(sent, ElementsAre("The old sentence."));
    EXPECT_EQ(transport.count(), 0U);
    EXPECT_EQ(writing->draftPrompt(), "");
    EXPECT_THAT(events(), ElementsAre(Event::Opened));
}

TEST_F(WritingToolsModelTest, ReplacingNothingSaysSo) {
    say("Yes");
    EXPECT_EQ(error(), "Nothing to replace yet.");
    EXPECT_THAT(heard, ElementsAre("content", "focus"));
    EXPECT_THAT(replacer.asked, IsEmpty());
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(WritingToolsModelTest, ABlankDraftStaysAsItIs) {
    say(" \n");
    EXPECT_EQ(writing->draftPrompt(), " \n");
    EXPECT_FALSE(writing->canSubmit());
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(WritingToolsModelTest, ReplaceWritesTheSuggestionOverTheSelection) {
    suggest("shorter", "The sentence.");
    heard.clear();
    say("replace it");
    EXPECT_TRUE(writing->isReplacing());
    EXPECT_THAT(heard, ElementsAre("started"));
    clock.advance(49ms);
    EXPECT_THAT(replacer.asked, IsEmpty());
    clock.advance(1ms);
    ASSERT_EQ(replacer.asked.size(), 1U);
    EXPECT_EQ(replacer.asked[0].replacement, "The sentence.");
    EXPECT_EQ(replacer.asked[0].target.source, 42);
    EXPECT_EQ(replacer.asked[0].target.window, selection.window);
    EXPECT_EQ(replacer.asked[0].target.original, "The old sentence.");
    EXPECT_EQ(replacer.asked[0].target.range, selection.selectedRange);
    EXPECT_FALSE(writing->isReplacing());
    EXPECT_THAT(heard, ElementsAre("started", "finished", "replaced"));
    EXPECT_EQ(events().back(), Event::AcceptedReplace);
}

TEST_F(WritingToolsModelTest, AReplacementEndsAsTheSelectionDoes) {
    selection.originalText = "  old words\r\n";
    open();
    suggest("shorter", "New words.");
    writing->replaceInApp();
    clock.advance(50ms);
    EXPECT_EQ(replacer.asked.at(0).replacement, "  New words\r\n");
}

TEST_F(WritingToolsModelTest, ARewriteThatIsAppliedAtOnceIs) {
    writing->requestRewrite("prompt", true);
    clock.settle();
    answer("New.");
    clock.advance(50ms);
    EXPECT_EQ(replacer.asked.size(), 1U);
    EXPECT_EQ(writing->promptFocusToken(), 0);
}

TEST_F(WritingToolsModelTest, AFailedReplaceKeepsTheSuggestionForAnotherTry) {
    suggest("shorter", "New.");
    heard.clear();
    replacer.outcome = SelectionReplacer::Outcome::NotReplaced;
    say("replace");
    clock.advance(50ms);
    EXPECT_TRUE(writing->replaceFailed());
    EXPECT_EQ(error(), "");
    EXPECT_EQ(suggestion(), "New.");
    EXPECT_THAT(heard, ElementsAre("started", "finished", "content", "focus"));
    EXPECT_EQ(events().back(), Event::Asked);
    replacer.outcome = SelectionReplacer::Outcome::Replaced;
    say("replace");
    EXPECT_FALSE(writing->replaceFailed());
    clock.advance(50ms);
    EXPECT_EQ(heard.back(), "replaced");
}

TEST_F(WritingToolsModelTest, AChangedTargetIsRefusedWithASentence) {
    suggest("shorter", "New.");
    replacer.outcome = SelectionReplacer::Outcome::OnClipboard;
    say("replace");
    clock.advance(50ms);
    EXPECT_TRUE(writing->replaceFailed());
    EXPECT_EQ(error(), "The selection has changed, so nothing was replaced. The suggestion is on "
                       "the clipboard.");
    EXPECT_EQ(suggestion(), "New.");
    EXPECT_FALSE(writing->canUndo());
}

TEST_F(WritingToolsModelTest, NothingIsAskedWhileAReplaceRuns) {
    suggest("shorter", "New.");
    replacer.waits = true;
    writing->replaceInApp();
    clock.advance(50ms);
    writing->setDraftPrompt("warmer");
    EXPECT_FALSE(writing->canSubmit());
    writing->submitPrompt();
    writing->replaceInApp();
    clock.settle();
    EXPECT_EQ(writing->draftPrompt(), "warmer");
    EXPECT_EQ(transport.count(), 1U);
    replacer.finish();
    clock.settle();
    EXPECT_EQ(replacer.asked.size(), 1U);
    EXPECT_TRUE(writing->canSubmit());
}

TEST_F(WritingToolsModelTest, ASecondReplaceIsOfWhatTookThePlace) {
    suggest("shorter", "One.");
    writing->replaceInApp();
    clock.advance(50ms);
    suggest("again", "Another.");
    writing->replaceInApp();
    clock.advance(50ms);
    ASSERT_EQ(replacer.asked.size(), 2U);
    EXPECT_EQ(replacer.asked[1].target.original, "One.");
    EXPECT_EQ(replacer.asked[1].target.range, (TextRange{.location = 3, .length = 4}));
}

TEST_F(WritingToolsModelTest, UndoPutsTheOriginalBackOnce) {
    suggest("shorter", "One.");
    EXPECT_FALSE(writing->canUndo());
    writing->undoReplace();
    writing->replaceInApp();
    clock.advance(50ms);
    ASSERT_TRUE(writing->canUndo());
    heard.clear();
    writing->undoReplace();
    EXPECT_TRUE(writing->isReplacing());
    clock.advance(50ms);
    EXPECT_THAT(heard, ElementsAre("started", "finished", "undone"));
    ASSERT_EQ(replacer.asked.size(), 2U);
    EXPECT_EQ(replacer.asked[1].replacement, "The old sentence.");
    EXPECT_EQ(replacer.asked[1].target.original, "One.");
    EXPECT_EQ(writing->standing(), "");
    EXPECT_FALSE(writing->canUndo());
    EXPECT_EQ(suggestion(), "One.");
    // The selection is what it was.
    writing->replaceInApp();
    clock.advance(50ms);
    EXPECT_EQ(replacer.asked.back().target.original, "The old sentence.");
}

TEST_F(WritingToolsModelTest, AnUndoThatFailsSaysSo) {
    suggest("shorter", "One.");
    writing->replaceInApp();
    clock.advance(50ms);
    replacer.outcome = SelectionReplacer::Outcome::OnClipboard;
    writing->undoReplace();
    clock.advance(50ms);
    EXPECT_EQ(error(), "The text has changed since, so it was left as it is. Your original is on "
                       "the clipboard.");
    EXPECT_FALSE(writing->isReplacing());
    EXPECT_TRUE(writing->canUndo()) << "it may answer the next time";
    replacer.outcome = SelectionReplacer::Outcome::Unanswered;
    writing->undoReplace();
    clock.advance(50ms);
    EXPECT_TRUE(error().startsWith("The application does not answer"));
    replacer.outcome = SelectionReplacer::Outcome::Replaced;
    writing->undoReplace();
    clock.advance(50ms);
    EXPECT_EQ(heard.back(), "undone");
    EXPECT_FALSE(writing->canUndo());
}

TEST_F(WritingToolsModelTest, UndoGoesBackVersionByVersionToTheOriginal) {
    for (const char* take : {"One.", "Another."}) {
        suggest("again", take);
        writing->replaceInApp();
        clock.advance(50ms);
    }
    EXPECT_EQ(writing->standing(), "Another.");
    // Whatever is on show meanwhile.
    suggest("again", "");
    ASSERT_TRUE(writing->canUndo());
    writing->undoReplace();
    clock.advance(50ms);
    EXPECT_EQ(replacer.asked.back().replacement, "One.");
    EXPECT_EQ(writing->standing(), "One.");
    ASSERT_TRUE(writing->canUndo());
    writing->undoReplace();
    clock.advance(50ms);
    EXPECT_EQ(replacer.asked.back().replacement, "The old sentence.");
    EXPECT_EQ(replacer.asked.back().target.original, "One.");
    EXPECT_EQ(writing->standing(), "");
    EXPECT_FALSE(writing->canUndo());
}

TEST_F(WritingToolsModelTest, EachReplacementHasTheFormOfTheOriginal) {
    selection.originalText = "the old words";
    open();
    for (const char* take : {"Great!", "Nice."}) {
        suggest("again", take);
        writing->replaceInApp();
        clock.advance(50ms);
    }
    EXPECT_EQ(replacer.asked.back().replacement, "Nice");
}

TEST_F(WritingToolsModelTest, AnApplicationThatDoesNotTakeTheTextIsSpokenOfAsItIs) {
    suggest("shorter", "One.");
    replacer.outcome = SelectionReplacer::Outcome::Unanswered;
    writing->replaceInApp();
    clock.advance(50ms);
    EXPECT_EQ(error(), "The application does not answer, so nothing was replaced. The suggestion "
                       "is on the clipboard.");
    replacer.outcome = SelectionReplacer::Outcome::Pending;
    writing->replaceInApp();
    clock.advance(50ms);
    EXPECT_EQ(error(), "The application has not taken the suggestion yet, and may still do so. It "
                       "is on the clipboard, too.");
    EXPECT_EQ(suggestion(), "One.");
}

TEST_F(WritingToolsModelTest, TabGoesRoundTheTakesThatWereSeen) {
    writing->showOtherTake();
    EXPECT_EQ(suggestion(), "");
    for (const char* take : {"One.", "Two.", "Three."})
        suggest("again", take);
    writing->showOtherTake();
    EXPECT_EQ(suggestion(), "One.");
    writing->showOtherTake(-1);
    EXPECT_EQ(suggestion(), "Three.");
    writing->showOtherTake(-1);
    EXPECT_EQ(suggestion(), "Two.");
    say("replace");
    clock.advance(50ms);
    EXPECT_EQ(replacer.asked.at(0).replacement, "Two.");
}

TEST_F(WritingToolsModelTest, TabBringsBackATakeAfterAnError) {
    suggest("shorter", "One.");
    say("again");
    answerLast(500, R"({"error":"Busy."})");
    EXPECT_EQ(suggestion(), "");
    writing->showOtherTake();
    EXPECT_EQ(suggestion(), "One.");
    EXPECT_EQ(error(), "");
}

TEST_F(WritingToolsModelTest, ARequestTakesThePlaceOfTheOneBefore) {
    say("shorter");
    const ScriptedExchange first = transport.last();
    say("warmer");
    ASSERT_EQ(transport.count(), 2U);
    EXPECT_TRUE(first.isAbandoned());
    first.respond(200, analysis("Late."));
    clock.settle();
    EXPECT_EQ(suggestion(), "");
    EXPECT_TRUE(writing->isWorking());
    answer("Now.");
    EXPECT_EQ(suggestion(), "Now.");
}

TEST_F(WritingToolsModelTest, TwoRequestsAndACancelBetweenEndInTheSecond) {
    suggest("shorter", "One.");
    say("again");
    const ScriptedExchange first = transport.last();
    writing->cancelRewrite();
    EXPECT_FALSE(writing->isWorking());
    EXPECT_EQ(suggestion(), "One.");
    clock.settle();
    say("warmer");
    first.respond(200, analysis("Late."));
    clock.settle();
    EXPECT_TRUE(writing->isWorking());
    answer("Two.");
    EXPECT_EQ(suggestion(), "Two.");
    EXPECT_EQ(error(), "");
}

TEST_F(WritingToolsModelTest, ACancelInTheSameTurnSendsNothing) {
    writing->setDraftPrompt("shorter");
    writing->submitPrompt();
    writing->cancelRewrite();
    clock.settle();
    EXPECT_EQ(transport.count(), 0U);
    EXPECT_FALSE(writing->isWorking());
}

TEST_F(WritingToolsModelTest, AFailureIsSaidInItsOwnWords) {
    say("shorter");
    heard.clear();
    answerLast(422, R"({"error":"That needs a model."})");
    EXPECT_EQ(error(), "That needs a model.");
    EXPECT_EQ(suggestion(), "");
    EXPECT_FALSE(writing->isWorking());
    EXPECT_THAT(heard, ElementsAre("content", "focus"));
    say("warmer");
    EXPECT_EQ(error(), "");
}

TEST_F(WritingToolsModelTest, ASessionOfTheAccountThatEndsLeavesNothingWorking) {
    say("shorter");
    account->signOut();
    clock.settle();
    if (transport.at(0).path() == "/ai/prompt") transport.at(0).respond(401, "{}");
    clock.settle();
    EXPECT_FALSE(writing->isWorking());
}

TEST_F(WritingToolsModelTest, ARefusedTokenIsRefreshedOnce) {
    say("shorter");
    answerLast(401, "{}");
    ASSERT_EQ(transport.last().path(), "/auth/refresh");
    answerLast(200, sessionJson("t2", R"(,"refreshToken":"r2")"));
    ASSERT_EQ(transport.last().path(), "/ai/prompt");
    EXPECT_EQ(transport.last().header("Authorization"), "Bearer t2");
    answer("New.");
    EXPECT_EQ(suggestion(), "New.");
}

TEST_F(WritingToolsModelTest, NobodySignedInIsToldToSignIn) {
    account->signOut();
    clock.settle();
    const std::size_t before = transport.count();
    say("shorter");
    EXPECT_EQ(transport.count(), before);
    EXPECT_EQ(error(), "Your session expired. Sign in again.");
    EXPECT_FALSE(writing->isWorking());
}

TEST_F(WritingToolsModelTest, AnAnswerOfNothingIsNoSuggestion) {
    suggest("shorter", "");
    EXPECT_EQ(suggestion(), "");
    EXPECT_EQ(error(), "Nothing to suggest — try a clearer rewrite ask.");
    EXPECT_THAT(writing->takes().seen(), IsEmpty());
}

TEST_F(WritingToolsModelTest, TheOriginalAListAndFencesAreTaken) {
    suggest("shorter", "The old sentence.");
    EXPECT_EQ(suggestion(), "The old sentence.");
    suggest("make a bullet list", "- One\n- Two");
    EXPECT_EQ(suggestion(), "- One\n- Two");
    suggest("shorter", "```\nThe sentence.\n```");
    EXPECT_EQ(suggestion(), "The sentence.");
}

TEST_F(WritingToolsModelTest, ALongSelectionAndALongAnswerAreTakenWhole) {
    selection.originalText = u"Long words.\n"_s.repeated(8'400);
    open();
    say("shorter");
    EXPECT_EQ(body()["selectedText"].toString(), selection.originalText);
    const QString megabyte = u"Words.\n"_s.repeated(150'000);
    answer(megabyte);
    EXPECT_EQ(suggestion(), trimmed(megabyte).toString());
    writing->replaceInApp();
    clock.advance(50ms);
    EXPECT_EQ(replacer.asked.at(0).replacement, megabyte);
}

TEST_F(WritingToolsModelTest, ASecondSessionKnowsNothingOfTheFirst) {
    suggest("shorter", "One.");
    writing->replaceInApp();
    clock.advance(50ms);
    open();
    EXPECT_FALSE(writing->canUndo());
    EXPECT_EQ(suggestion(), "");
    say("again");
    EXPECT_FALSE(sentPrompt().contains("earlier direction"));
    EXPECT_FALSE(sentPrompt().contains("shorter\n"));
    EXPECT_THAT(writing->takes().rejected(), IsEmpty());
}

TEST_F(WritingToolsModelTest, ItMayGoWhenever) {
    say("shorter");
    const ScriptedExchange asked = transport.last();
    writing.reset();
    asked.respond(200, analysis("Late."));
    clock.settle();
    open();
    suggest("shorter", "One.");
    replacer.waits = true;
    writing->replaceInApp();
    clock.advance(50ms);
    writing.reset();
    replacer.finish();
    clock.settle();
    EXPECT_EQ(replacer.asked.size(), 1U);
}

TEST_F(WritingToolsModelTest, ItMayGoInAnyOfItsSignals) {
    for (const auto signal :
         {&WritingToolsModel::suggestionChanged, &WritingToolsModel::draftPromptChanged,
          &WritingToolsModel::stateChanged, &WritingToolsModel::promptFocusTokenChanged,
          &WritingToolsModel::replaceStarted, &WritingToolsModel::replaceFinished,
          &WritingToolsModel::replaced, &WritingToolsModel::contentChange}) {
        // After as many of them as it takes to meet each place where it is emitted.
        for (int survived = 0; survived < 12; ++survived) {
            open();
            int left = survived;
            QObject::connect(writing.get(), signal, &m_context, [this, &left] {
                if (left-- == 0) writing.reset();
            });
            if (writing) say("shorter");
            if (writing) answer("One.");
            if (writing) say("replace");
            clock.advance(50ms);
            if (writing) say("again");
            if (writing) writing->cancelRewrite();
            if (writing) writing->showOtherTake();
            if (writing) QObject::disconnect(writing.get(), nullptr, &m_context, nullptr);
        }
    }
}

TEST_F(WritingToolsModelTest, ActionsHaveRawNamesAndNoneIsInUse) {
    EXPECT_EQ(rawString(WritingToolAction::Rephrase), "rephrase");
    EXPECT_EQ(rawString(WritingToolAction::Improve), "improve");
    EXPECT_EQ(rawString(WritingToolAction::Shorter), "shorter");
    say("shorter");
    EXPECT_EQ(writing->activeAction(), std::nullopt);
}

} // namespace
} // namespace vorq
