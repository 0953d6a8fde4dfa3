#include "library/richtext/NoteRichText.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

NoteAttributes ofSize(double size) {
    NoteAttributes attributes;
    attributes.font.size = size;
    return attributes;
}

void enlarge(NoteAttributes& attributes) {
    attributes.font.size += 100;
}

std::vector<std::pair<qsizetype, double>> runsOf(const NoteRichText& text) {
    std::vector<std::pair<qsizetype, double>> runs;
    for (const NoteRichText::Run& run : text.runs())
        runs.emplace_back(run.length, run.attributes.font.size);
    return runs;
}

using Runs = std::vector<std::pair<qsizetype, double>>;

} // namespace

TEST(NoteRichText, JoinsRunsOfEqualAttributes) {
    NoteRichText text(u"ab", ofSize(1));
    text.append(u"c", ofSize(1));
    text.append(u"", ofSize(3));
    text.append(NoteRichText(u"d", ofSize(2)));
    EXPECT_EQ(text.text(), u"abcd");
    EXPECT_EQ(runsOf(text), (Runs{{3, 1}, {1, 2}}));
    EXPECT_EQ(text.attributesAt(2).font.size, 1);
    EXPECT_EQ(text.attributesAt(3).font.size, 2);
}

TEST(NoteRichText, AppendsItself) {
    NoteRichText text(u"ab", ofSize(1));
    text.append(text);
    EXPECT_EQ(text, NoteRichText(u"abab", ofSize(1)));
}

TEST(NoteRichText, ChangesARange) {
    NoteRichText text(u"abcd", ofSize(1));
    text.append(u"efgh", ofSize(2));
    text.change(2, 4, enlarge);
    EXPECT_EQ(runsOf(text), (Runs{{2, 1}, {2, 101}, {2, 102}, {2, 2}}));
}

TEST(NoteRichText, CutsRangesAtItsEnds) {
    NoteRichText text(u"abcd", ofSize(1));
    text.change(-3, 1000, enlarge);
    EXPECT_EQ(runsOf(text), (Runs{{4, 101}}));
    text.change(4, 2, enlarge);
    text.change(2, -1, enlarge);
    EXPECT_EQ(runsOf(text), (Runs{{4, 101}}));
    EXPECT_EQ(text.sliced(2, 99), NoteRichText(u"cd", ofSize(101)));
    EXPECT_TRUE(text.sliced(9, 1).isEmpty());
}

TEST(NoteRichText, SlicesRuns) {
    NoteRichText text(u"abcd", ofSize(1));
    text.append(u"efgh", ofSize(2));
    const NoteRichText piece = text.sliced(3, 2);
    EXPECT_EQ(piece.text(), u"de");
    EXPECT_EQ(runsOf(piece), (Runs{{1, 1}, {1, 2}}));
}

} // namespace vorq
