#include "capture/copy/SelectionWrite.h"
#include "platform/testing/ScriptedAccessibility.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class SelectionWriteTest : public testing::Test {
  protected:
    SelectionWriteTest() { accessibility.applicationName = field.name(); }

    ScriptedAccessibility accessibility;
    ScriptedElement& field = accessibility.element(u"field"_s);

    [[nodiscard]] QString found(const QString& text) {
        const auto root = accessibility.application(1, {});
        const auto element = std::static_pointer_cast<ScriptedElement>(findTextElement(root, text));
        return element ? element->name() : QString();
    }
    // A chain of so many elements below the field, the last of which has the text.
    void nest(int levels, const QString& text) {
        QString name = field.name();
        for (int level = 1; level <= levels; ++level) {
            const QString next = QString::number(level);
            accessibility.element(name).childNames = QStringList{next};
            name = next;
        }
        accessibility.element(name).content = text;
    }
};

TEST_F(SelectionWriteTest, FindsTheFirstElementWithTheText) {
    field.childNames = QStringList{"one", "two", "three"};
    accessibility.element("one").content = "nothing";
    accessibility.element("two").content = "some words here";
    accessibility.element("three").content = "some words here";
    EXPECT_EQ(found("words"), "two");
    EXPECT_EQ(found(" words\n"), "two");
    EXPECT_EQ(found("absent"), "");
}

TEST_F(SelectionWriteTest, LooksAtTwelveLevels) {
    nest(11, "words");
    EXPECT_EQ(found("words"), "11");
}

TEST_F(SelectionWriteTest, LooksNoDeeper) {
    nest(12, "words");
    EXPECT_EQ(found("words"), "");
}

TEST_F(SelectionWriteTest, MatchesASelectionButForItsEnds) {
    EXPECT_FALSE(selectionMatches("old", field));
    field.text = "";
    EXPECT_FALSE(selectionMatches("", field));
    field.text = " old\n";
    EXPECT_TRUE(selectionMatches("old", field));
    field.text = "  ";
    EXPECT_FALSE(selectionMatches(" ", field));
    field.text = "new";
    EXPECT_FALSE(selectionMatches("old", field));
}

TEST_F(SelectionWriteTest, JudgesAReplacementByTheSelectionFirst) {
    field.content = "old";
    field.text = "new";
    EXPECT_TRUE(selectionReplaced("old", "new", field));
    field.text = "old";
    field.content = "new";
    EXPECT_FALSE(selectionReplaced("old", "new", field));
}

TEST_F(SelectionWriteTest, JudgesAReplacementWithoutAValueByWhatIsSelected) {
    EXPECT_TRUE(selectionReplaced("old", "new", field));
    field.range = TextRange{.location = 0, .length = 2};
    EXPECT_FALSE(selectionReplaced("old", "new", field));
    field.range = TextRange{.location = 2, .length = 0};
    EXPECT_TRUE(selectionReplaced("old", "new", field));
    field.text = "other";
    EXPECT_FALSE(selectionReplaced("old", "new", field));
}

TEST_F(SelectionWriteTest, JudgesAReplacementByTheValue) {
    field.content = "some new words";
    EXPECT_TRUE(selectionReplaced("old", "new", field));
    EXPECT_FALSE(selectionReplaced("old", "newer", field));
    EXPECT_FALSE(selectionReplaced("words", "new", field));
    EXPECT_TRUE(selectionReplaced("", "new", field));
    EXPECT_TRUE(selectionReplaced("new", "new", field));
    EXPECT_FALSE(selectionReplaced("old", "", field));
}

TEST_F(SelectionWriteTest, SelectsThePreferredRangeAgain) {
    field.content = "old and old";
    EXPECT_TRUE(restoreSelection("old", TextRange{.location = 8, .length = 3}, field));
    EXPECT_EQ(field.range, (TextRange{.location = 8, .length = 3}));
}

TEST_F(SelectionWriteTest, SelectsTheFirstOccurrenceAgain) {
    field.content = "an old and old";
    EXPECT_TRUE(restoreSelection("old\n", std::nullopt, field));
    EXPECT_EQ(field.range, (TextRange{.location = 3, .length = 3}));
    EXPECT_FALSE(restoreSelection("absent", std::nullopt, field));
}

TEST_F(SelectionWriteTest, LeavesASelectionThatMatches) {
    field.text = "old";
    EXPECT_TRUE(restoreSelection("old", TextRange{.location = 8, .length = 3}, field));
    EXPECT_EQ(field.range, std::nullopt);
}

TEST_F(SelectionWriteTest, KnowsAnotherTextFromTheOriginal) {
    EXPECT_TRUE(holdsOriginal("old", std::nullopt, field));
    field.content = "an old text";
    EXPECT_TRUE(holdsOriginal("old", std::nullopt, field));
    EXPECT_TRUE(holdsOriginal("old", TextRange{.location = 3, .length = 3}, field));
    EXPECT_FALSE(holdsOriginal("old", TextRange{.location = 4, .length = 3}, field));
    EXPECT_FALSE(holdsOriginal("old", TextRange{.location = 90, .length = 3}, field));
    EXPECT_FALSE(holdsOriginal("else", std::nullopt, field));
    field.text = "text";
    EXPECT_FALSE(holdsOriginal("old", TextRange{.location = 3, .length = 3}, field));
}

} // namespace
} // namespace vorq
