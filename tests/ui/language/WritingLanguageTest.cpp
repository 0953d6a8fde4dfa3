// The card of the writing tools in a language whose texts are longer: all that it shows and says is
// translated, and there is room for it. What the writer or a server would write has no letters
// here.

#include "doubles/ui/WritingStage.h"
#include "ui/language/ShownTexts.h"

#include <QAccessible>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

struct CardState {
    const char* name;
    std::function<void(WritingStage&)> prepare;
};

void PrintTo(const CardState& state, std::ostream* out) {
    *out << state.name;
}

void suggestTwice(WritingStage& stage) {
    stage.suggest("5", "1 2 6 4.");
    stage.suggest("7", "1 8 3 4.");
}

void replaceFailing(WritingStage& stage, SelectionReplacer::Outcome outcome) {
    suggestTwice(stage);
    stage.replacer.outcome = outcome;
    stage.replace();
}

const std::vector<CardState>& cardStates() {
    static const std::vector<CardState> states{
        {"empty", [](WritingStage&) {}},
        {"working", [](WritingStage& s) { s.card->run(1); }},
        {"suggestion", suggestTwice},
        {"plain",
         [](WritingStage& s) {
             suggestTwice(s);
             s.card->setShowsDifference(false);
         }},
        {"replaced",
         [](WritingStage& s) {
             suggestTwice(s);
             s.replace();
         }},
        {"replaced_and_on",
         [](WritingStage& s) {
             suggestTwice(s);
             s.replace();
             s.suggest("8", "1 9 3 4.");
         }},
        {"unanswered",
         [](WritingStage& s) { replaceFailing(s, SelectionReplacer::Outcome::Unanswered); }},
        {"pending",
         [](WritingStage& s) { replaceFailing(s, SelectionReplacer::Outcome::Pending); }},
        {"undone",
         [](WritingStage& s) {
             suggestTwice(s);
             s.replace();
             s.card->undo();
             s.clock.advance(std::chrono::milliseconds(100));
         }},
        {"changed",
         [](WritingStage& s) { replaceFailing(s, SelectionReplacer::Outcome::OnClipboard); }},
        {"failed",
         [](WritingStage& s) { replaceFailing(s, SelectionReplacer::Outcome::NotReplaced); }},
        {"nothing_to_replace",
         [](WritingStage& s) {
             s.card->setDraft("replace");
             s.card->submit();
             s.card->setDraft({});
         }},
        {"nothing_suggested", [](WritingStage& s) { s.suggest("5", ""); }},
        {"signed_out",
         [](WritingStage& s) {
             s.state->account().signOut();
             s.clock.settle();
         }},
    };
    return states;
}

class WritingLanguageTest : public testing::TestWithParam<CardState> {
  protected:
    WritingLanguageTest() { QAccessible::setActive(true); }
    ~WritingLanguageTest() override { QAccessible::setActive(false); }

    void show() {
        QObject::connect(stage.card.get(), &WritingCard::announced,
                         [this](const QString& words) { announced += words; });
        GetParam().prepare(stage);
        stage.show();
        stage.settle(100);
    }

    TestLanguage language;
    WritingStage stage{u"1 2 3 4."_s};
    QStringList announced;
};

TEST_P(WritingLanguageTest, AllThatIsShownAndSaidIsTranslated) {
    show();
    QStringList texts = shownTexts(*stage.window) + announced;
    texts.replaceInStrings(QRegularExpression("<[^>]*>"), ""); // how the difference is marked
    EXPECT_EQ(TestLanguage::foreign(texts), "");
    EXPECT_TRUE(texts.join(' ').contains(u'«'));
}

TEST_P(WritingLanguageTest, NoTextIsCutOff) {
    show();
    EXPECT_EQ(cutTexts(*stage.window), "");
}

INSTANTIATE_TEST_SUITE_P(, WritingLanguageTest, testing::ValuesIn(cardStates()),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace vorq
