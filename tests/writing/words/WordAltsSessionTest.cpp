// Other words for single words of a selection, from the request to the replacement.

#include "doubles/writing/WritingFixture.h"
#include "writing/words/WordAltSentence.h"
#include "writing/words/WordAltsChoice.h"
#include "writing/words/WordAltsPrompt.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Outcome = SelectionReplacer::Outcome;

// Twelve words, so two alternatives.
const QString dogText = u"The big dog saw a cat and ran through some old gardens."_s;
const QString dogAnswer = uR"([{"word":"big","alternative":"large"},
                               {"word":"gardens","alternative":"parks"}])"_s;

class WordAltsSessionTest : public WritingFixture {
  protected:
    WordAltsSessionTest() { reopen(dogText); }

    void reopen(const QString& text) {
        selection.originalText = text;
        selection.selectedRange = TextRange{.location = 3, .length = text.size()};
        open();
    }
    void load() {
        writing->loadWordAlts();
        advance(400ms);
    }
    void advance(Clock::Duration time) {
        clock.settle();
        clock.advance(time);
        clock.settle();
    }
    void loadAndAnswer() {
        load();
        answer(dogAnswer);
    }
    [[nodiscard]] const QList<WritingWordAlt>& alts() const { return writing->words().wordAlts(); }
    void apply(qsizetype at) {
        writing->applyWordAlt(QUuid(alts()[at].id));
        advance(100ms);
    }
    [[nodiscard]] QString text() const { return writing->selection().originalText; }
    void expectRangesAtTheirWords() const {
        for (const WritingWordAlt& alt : alts())
            EXPECT_EQ(text().mid(alt.utf16Range->location, alt.utf16Range->length), alt.original);
    }
};

TEST_F(WordAltsSessionTest, TheyAreAskedForInOneRequest) {
    writing->loadWordAlts();
    writing->loadWordAlts();
    EXPECT_TRUE(writing->words().isLoadingWordAlts());
    clock.settle();
    EXPECT_EQ(transport.count(), 0U);
    advance(400ms);
    ASSERT_EQ(transport.count(), 1U);
    EXPECT_EQ(body()["prompt"], promptForWordAlternatives(2));
    EXPECT_EQ(body()["selectedText"], dogText);
    EXPECT_EQ(body()["skipUserPreferences"], true);
    answer(dogAnswer);
    EXPECT_FALSE(writing->words().isLoadingWordAlts());
    EXPECT_TRUE(writing->words().didLoadWordAlts());
    EXPECT_THAT(alts(), SizeIs(2));
    load();
    EXPECT_EQ(transport.count(), 1U);
    EXPECT_THAT(heard, IsEmpty()) << "the card was disturbed";
}

TEST_F(WordAltsSessionTest, TheModelIsToldHowToAnswer) {
    const QString prompt = promptForWordAlternatives(3);
    EXPECT_TRUE(prompt.startsWith(u"Writing tools — word alternatives.\n"_s));
    EXPECT_TRUE(prompt.contains("the most useful first, 3 at most."));
    EXPECT_TRUE(prompt.contains(uR"([{"word": )"_s));
}

TEST_F(WordAltsSessionTest, NothingIsAskedWhereNoWordCouldBeReplaced) {
    reopen("Five words are too few.");
    load();
    reopen(dogText);
    selection.selectedRange.reset();
    open();
    load();
    selection.selectedRange = TextRange{.location = 3, .length = 7};
    open();
    load();
    EXPECT_EQ(transport.count(), 0U);
}

TEST_F(WordAltsSessionTest, NobodySignedInAsksNothing) {
    account->signOut();
    clock.settle();
    const std::size_t before = transport.count();
    load();
    EXPECT_EQ(transport.count(), before);
    EXPECT_EQ(error(), "");
}

TEST_F(WordAltsSessionTest, AFailureIsNotTold) {
    for (const int status : {422, 500, 401}) {
        open();
        load();
        answerLast(status, R"({"error":"Other words need a language model."})");
        for (int more = 0; more < 3; ++more)
            if (!transport.last().isAbandoned()) transport.last().respond(500, "{}");
        advance(1s);
        EXPECT_EQ(error(), "");
        EXPECT_THAT(alts(), IsEmpty());
        EXPECT_FALSE(writing->words().isLoadingWordAlts());
        EXPECT_FALSE(writing->isWorking());
    }
}

TEST_F(WordAltsSessionTest, ClosingTheCardCancelsTheRequest) {
    load();
    EXPECT_FALSE(transport.last().isAbandoned());
    writing.reset();
    clock.settle();
    EXPECT_TRUE(transport.last().isAbandoned());
}

TEST_F(WordAltsSessionTest, WhatTheWriterAsksForComesFirst) {
    load();
    const ScriptedExchange words = transport.last();
    say("warmer");
    EXPECT_TRUE(words.isAbandoned());
    EXPECT_EQ(transport.count(), 2U);
    EXPECT_TRUE(sentPrompt().contains("Writer ask: warmer"));
    answer("A warmer sentence.");
    EXPECT_EQ(suggestion(), "A warmer sentence.");
    advance(400ms);
    ASSERT_EQ(transport.count(), 3U) << "then it is asked anew";
    say("shorter");
    answer("Short.");
    advance(1s);
    EXPECT_EQ(transport.count(), 4U) << "but not again and again";
}

TEST_F(WordAltsSessionTest, AskedForDuringARequestTheyWait) {
    say("warmer");
    load();
    EXPECT_EQ(transport.count(), 1U);
    answer("A warmer sentence.");
    advance(400ms);
    EXPECT_EQ(transport.count(), 2U);
    answer(dogAnswer);
    EXPECT_THAT(alts(), SizeIs(2));
    EXPECT_EQ(suggestion(), "A warmer sentence.");
}

TEST_F(WordAltsSessionTest, AReliablePlaceAsksOnceMoreIfThereAreNone) {
    selection.selectionReliable = false;
    open();
    load();
    answer("[]");
    writing->noteReliablePlacement();
    advance(400ms);
    EXPECT_EQ(transport.count(), 2U);
    EXPECT_TRUE(writing->wordAltsLoader().didReloadWordAltsForReliableFrame());
    answer("[]");
    writing->noteReliablePlacement();
    advance(400ms);
    EXPECT_EQ(transport.count(), 2U);
    open();
    loadAndAnswer();
    writing->noteReliablePlacement();
    advance(400ms);
    EXPECT_EQ(transport.count(), 3U) << "with words there is nothing more to ask for";
}

TEST_F(WordAltsSessionTest, AnotherSelectionEndsThem) {
    load();
    writing->forgetWordAlts();
    clock.settle();
    EXPECT_TRUE(transport.last().isAbandoned());
    EXPECT_FALSE(writing->words().isLoadingWordAlts());
    writing->noteReliablePlacement();
    advance(400ms);
    EXPECT_EQ(transport.count(), 1U);
}

TEST_F(WordAltsSessionTest, OneTakesItsWordsPlaceAndTheOthersMoveAlong) {
    loadAndAnswer();
    apply(0);
    ASSERT_THAT(replacer.asked, SizeIs(1));
    const SelectionReplacer::Target& target = replacer.asked[0].target;
    EXPECT_EQ(replacer.asked[0].replacement, "large");
    EXPECT_EQ(target.range, (TextRange{.location = 7, .length = 3}));
    EXPECT_EQ(target.within->range, (TextRange{.location = 3, .length = dogText.size()}));
    EXPECT_EQ(text(), "The large dog saw a cat and ran through some old gardens.");
    EXPECT_EQ(writing->selection().selectedRange->length, text().size());
    ASSERT_THAT(alts(), SizeIs(1));
    expectRangesAtTheirWords();
    apply(0);
    EXPECT_EQ(text(), "The large dog saw a cat and ran through some old parks.");
    EXPECT_EQ(replacer.asked[1].target.range, (TextRange{.location = 52, .length = 7}));
    EXPECT_EQ(replacer.asked[1].target.within->text,
              "The large dog saw a cat and ran through some old gardens.");
}

TEST_F(WordAltsSessionTest, ALaterRewriteIsOfTheNewText) {
    loadAndAnswer();
    apply(0);
    suggest("warmer", "A warm one.");
    EXPECT_EQ(body()["selectedText"], text());
    EXPECT_TRUE(sentPrompt().contains("selection text changed to: The large dog"));
    writing->replaceInApp();
    advance(100ms);
    EXPECT_EQ(replacer.asked.back().target.original, text());
    EXPECT_FALSE(replacer.asked.back().target.within);
    EXPECT_EQ(replacer.asked.back().target.range,
              (TextRange{.location = 3, .length = text().size()}));
    EXPECT_THAT(alts(), IsEmpty());
}

TEST_F(WordAltsSessionTest, UndoTakesBackTheLastChange) {
    loadAndAnswer();
    apply(0);
    ASSERT_TRUE(writing->canUndo());
    writing->undoReplace();
    advance(100ms);
    EXPECT_EQ(text(), dogText);
    EXPECT_EQ(writing->selection().selectedRange->length, dogText.size());
    EXPECT_THAT(alts(), SizeIs(2));
    expectRangesAtTheirWords();
    EXPECT_FALSE(writing->canUndo());
}

TEST_F(WordAltsSessionTest, AnUndoThatFailsLeavesWhatIsThere) {
    loadAndAnswer();
    apply(0);
    replacer.outcome = Outcome::NotReplaced;
    writing->undoReplace();
    advance(100ms);
    EXPECT_EQ(text(), "The large dog saw a cat and ran through some old gardens.");
    EXPECT_FALSE(error().isEmpty());
    expectRangesAtTheirWords();
}

TEST_F(WordAltsSessionTest, AFailureLeavesAllAndCanBeTriedAgain) {
    loadAndAnswer();
    replacer.outcome = Outcome::NotReplaced;
    apply(0);
    EXPECT_EQ(error(), u"Couldn’t replace “big” — try again");
    EXPECT_EQ(text(), dogText);
    EXPECT_THAT(alts(), SizeIs(2));
    EXPECT_EQ(writing->words().applyingWordAltID(), std::nullopt);
    EXPECT_FALSE(writing->replaceFailed());
    replacer.outcome = Outcome::Replaced;
    apply(0);
    EXPECT_EQ(error(), "");
}

TEST_F(WordAltsSessionTest, OfTwoAtOnceOneIsApplied) {
    loadAndAnswer();
    const QUuid first = alts()[0].id;
    const QUuid second = alts()[1].id;
    EXPECT_TRUE(writing->applyWordAlt(first));
    EXPECT_FALSE(writing->applyWordAlt(second));
    EXPECT_FALSE(writing->applyWordAlt(first));
    EXPECT_EQ(writing->words().applyingWordAltID(), first);
    EXPECT_TRUE(writing->isReplacing());
    advance(100ms);
    EXPECT_THAT(replacer.asked, SizeIs(1));
    EXPECT_FALSE(writing->applyWordAlt(first)) << "it is no longer there";
    EXPECT_TRUE(writing->applyWordAlt(second));
}

TEST_F(WordAltsSessionTest, DuringAReplacementNoneIsApplied) {
    loadAndAnswer();
    suggest("warmer", "A warm one.");
    replacer.waits = true;
    writing->replaceInApp();
    EXPECT_FALSE(writing->applyWordAlt(QUuid(alts()[0].id)));
    advance(100ms);
    replacer.finish();
    clock.settle();
    EXPECT_THAT(replacer.asked, SizeIs(1));
}

TEST_F(WordAltsSessionTest, DuringARequestOneIsAppliedAndTheAnswerIsShown) {
    loadAndAnswer();
    say("warmer");
    apply(0);
    EXPECT_TRUE(writing->isWorking());
    answer("A warm one.");
    EXPECT_EQ(suggestion(), "A warm one.");
    EXPECT_EQ(text(), "The large dog saw a cat and ran through some old gardens.");
}

TEST_F(WordAltsSessionTest, AReplacementGoesOnWhenTheCardIsClosed) {
    loadAndAnswer();
    replacer.waits = true;
    apply(0);
    ASSERT_THAT(replacer.asked, SizeIs(1));
    writing.reset();
    replacer.finish();
    clock.settle();
}

TEST_F(WordAltsSessionTest, ItMayGoInAnyOfItsSignals) {
    for (int signal = 0; signal < 5; ++signal) {
        open();
        loadAndAnswer();
        const auto end = [this] { writing.release()->deleteLater(); };
        const auto once = Qt::SingleShotConnection;
        WritingToolsModel* model = writing.get();
        WritingWordAlts* words = &model->words();
        if (signal == 0) QObject::connect(words, &WritingWordAlts::editStarted, model, end, once);
        if (signal == 1) QObject::connect(words, &WritingWordAlts::editFinished, model, end, once);
        if (signal == 2) QObject::connect(words, &WritingWordAlts::changed, model, end, once);
        if (signal == 3)
            QObject::connect(model, &WritingToolsModel::wordReplaced, model, end, once);
        if (signal == 4)
            QObject::connect(model, &WritingToolsModel::stateChanged, model, end, once);
        model->applyWordAlt(QUuid(words->wordAlts()[0].id));
        advance(100ms);
        EXPECT_EQ(writing, nullptr) << signal;
    }
}

QString sentence(const QString& text, qsizetype at, const QString& word, const QString& other) {
    const WritingWordAlt alt{.original = word,
                             .alternative = other,
                             .utf16Range = TextRange{.location = at, .length = word.size()},
                             .wordFrame = {}};
    QString told;
    for (const DifferencePart& part : sentenceWith(text, alt))
        told += part.kind == DifferencePart::Kind::Added ? '[' + part.text + ']' : part.text;
    return told;
}

TEST(WordAltSentenceTest, ASentenceIsShownAsItWouldRead) {
    EXPECT_EQ(sentence("One. The big dog sat. Two.", 9, "big", "large"), "The [large] dog sat.");
    EXPECT_EQ(sentence("Big dogs sit.", 0, "Big", "Large"), "[Large] dogs sit.");
    EXPECT_EQ(sentence("They sit still", 9, "still", "calmly"), "They sit [calmly]");
    EXPECT_EQ(sentence("A dog\nsat  there", 6, "sat", "stood"), "[stood] there");
    EXPECT_EQ(sentence("short", 7, "x", "y"), "");
}

TEST(WordAltSentenceTest, ALongSentenceIsCutAroundTheWord) {
    const QString words = u"word "_s.repeated(60);
    const QString told = sentence(words + "big " + words, words.size(), "big", "large");
    EXPECT_TRUE(told.startsWith(u"… word"_s)) << told.toStdString();
    EXPECT_TRUE(told.endsWith(u"word…"_s)) << told.toStdString();
    EXPECT_TRUE(told.contains("word [large] word"));
    EXPECT_LE(told.size(), 2 * mostAroundWord + 12);
}

} // namespace
} // namespace vorq
