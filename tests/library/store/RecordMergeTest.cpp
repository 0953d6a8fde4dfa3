#include "library/store/RecordMerge.h"
#include "library/records/SavedNote.h"

#include <gmock/gmock.h>
#include <random>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A letter is the note's id, what follows it the text.
SavedNote note(const QString& spelled) {
    SavedNote note;
    note.id = QUuid(u"00000000-0000-0000-0000-0000000000%1"_s.arg(
        static_cast<int>(spelled[0].unicode()), 2, 16, QLatin1Char('0')));
    note.text = spelled;
    return note;
}

std::vector<SavedNote> notes(const QStringList& spelled) {
    std::vector<SavedNote> notes;
    for (const QString& one : spelled)
        notes.push_back(note(one));
    return notes;
}

QStringList merged(const QStringList& known, const QStringList& mine, const QStringList& theirs) {
    const std::vector<SavedNote> before = notes(known);
    const std::vector<SavedNote> ours = notes(mine);
    const std::vector<SavedNote> others = notes(theirs);
    QStringList texts;
    for (const SavedNote& held : RecordMerge<SavedNote>(before, ours, others).run())
        texts += held.text;
    return texts;
}

TEST(RecordMergeTest, TakesWhatEitherSideDid) {
    EXPECT_THAT(merged({"a", "b"}, {"a", "b"}, {"a", "b"}), ElementsAre("a", "b"));
    EXPECT_THAT(merged({"a"}, {"b", "a"}, {"c", "a"}), ElementsAre("b", "c", "a"));
    EXPECT_THAT(merged({"a", "b"}, {"a"}, {"a", "b", "c"}), ElementsAre("a", "c"));
    EXPECT_THAT(merged({"a", "b"}, {"a", "b"}, {"b"}), ElementsAre("b"));
    EXPECT_THAT(merged({"a", "b"}, {"a1", "b"}, {"a", "b1"}), ElementsAre("a1", "b1"));
    EXPECT_THAT(merged({"a"}, {}, {}), IsEmpty());
}

TEST(RecordMergeTest, AChangeWeighsMoreThanARemoval) {
    EXPECT_THAT(merged({"a"}, {"a1"}, {}), ElementsAre("a1"));
    EXPECT_THAT(merged({"a"}, {}, {"a1"}), ElementsAre("a1"));
}

TEST(RecordMergeTest, WhatBothChangedIsKeptTwiceUnlessItIsTheSame) {
    EXPECT_THAT(merged({"a"}, {"a1"}, {"a2"}), ElementsAre("a1", "a2"));
    EXPECT_THAT(merged({"a"}, {"a1"}, {"a1"}), ElementsAre("a1"));
    EXPECT_THAT(merged({}, {"a1"}, {"a2"}), ElementsAre("a1", "a2"));
    const std::vector<SavedNote> mine = notes({"a1"});
    const std::vector<SavedNote> theirs = notes({"a2"});
    const auto both = RecordMerge<SavedNote>({}, mine, theirs).run();
    EXPECT_EQ(both[0].id, mine[0].id);
    EXPECT_NE(both[1].id, mine[0].id);
}

TEST(RecordMergeTest, TheOrderIsThatOfWhoChangedIt) {
    EXPECT_THAT(merged({"a", "b", "c"}, {"a", "b", "c"}, {"c", "a", "b"}),
                ElementsAre("c", "a", "b"));
    EXPECT_THAT(merged({"a", "b", "c"}, {"b", "a", "c"}, {"a", "b", "c"}),
                ElementsAre("b", "a", "c"));
    EXPECT_THAT(merged({"a", "b"}, {"b", "a"}, {"a", "d", "b"}), ElementsAre("b", "a", "d"));
}

TEST(RecordMergeTest, RecordsOfEqualIdStaySeveral) {
    EXPECT_THAT(merged({"a1", "a2"}, {"a1", "a2", "b"}, {"a1", "a2", "c"}),
                ElementsAre("a1", "a2", "b", "c"));
}

TEST(RecordMergeTest, WhatIsOnlyInMemoryMakesNoDifference) {
    std::vector<SavedNote> before = notes({"a"});
    std::vector<SavedNote> after = before;
    after[0].createdAt += std::chrono::milliseconds(1); // below what a file holds
    EXPECT_TRUE(RecordMerge<SavedNote>::areEqual(before, after));
    EXPECT_FALSE(RecordMerge<SavedNote>::areEqual(before, notes({"a1"})));
    EXPECT_FALSE(RecordMerge<SavedNote>::areEqual(before, notes({"b"})));
}

// Whatever the two do: nothing that either wrote is lost unless the other removed it untouched.
TEST(RecordMergeTest, LosesNothingOfAnyTwoHistories) {
    std::mt19937 random(7);
    const auto changed = [&random](QStringList list, const QString& by) {
        for (int step = 0; step < 4; ++step) {
            const auto at = static_cast<qsizetype>(random() % 6);
            const QString fresh(QChar(static_cast<char16_t>(u'k' + random() % 8)));
            if (at >= list.size())
                list.insert(
                    static_cast<qsizetype>(random() % static_cast<std::size_t>(list.size() + 1)),
                    fresh + by);
            else if (random() % 2 == 0)
                list.removeAt(at);
            else
                list[at] = list[at].left(1) + by;
        }
        return list;
    };
    const QStringList known = {"a", "b", "c", "d", "e"};
    for (int round = 0; round < 2000; ++round) {
        const QStringList mine = changed(known, "-mine");
        const QStringList theirs = changed(known, "-theirs");
        const QStringList all = merged(known, mine, theirs);
        for (const QString& text : mine + theirs) {
            const bool isRemoved =
                known.contains(text) && !(mine.contains(text) && theirs.contains(text));
            EXPECT_EQ(all.contains(text), !isRemoved) << text.toStdString();
        }
        for (const QString& text : all)
            EXPECT_TRUE(mine.contains(text) || theirs.contains(text)) << text.toStdString();
    }
}

} // namespace
} // namespace vorq
