#include "writing/WritingSessionLog.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Kind = WritingToolsInteraction::Kind;

// A moment of the writer's own day.
QDateTime at(int minute) {
    return QDateTime(QDate(2026, 1, 15), QTime(10, minute, 7)).toUTC();
}

QString lineOf(const Kind& kind) {
    return WritingToolsInteraction{.at = at(5), .kind = kind}.promptLine();
}

TEST(WritingSessionLogTest, EachEventHasItsLineWithTheTimeWhereTheWriterIs) {
    EXPECT_EQ(lineOf(Kind::asked("make it warmer")), "[10:05:07] writer asked: make it warmer");
    EXPECT_EQ(lineOf(Kind::selectionTextChanged("new")),
              "[10:05:07] selection text changed to: new");
    EXPECT_EQ(lineOf(Kind::opened()),
              "[10:05:07] opened Writing Tools on the highlighted selection");
    EXPECT_EQ(lineOf(Kind::rejectedTake()),
              "[10:05:07] writer rejected the on-screen take (asked for another)");
    EXPECT_EQ(lineOf(Kind::acceptedReplace()),
              "[10:05:07] writer accepted and replaced the highlight");
    EXPECT_EQ(lineOf(Kind::highlightMoved()),
              "[10:05:07] highlight moved on screen (writer scrolled or re-selected)");
}

TEST(WritingSessionLogTest, ASelectionOfMoreThan120CharactersIsCut) {
    const QString family = u"👩‍👩‍👧"_s;
    EXPECT_EQ(lineOf(Kind::selectionTextChanged(family.repeated(120))),
              u"[10:05:07] selection text changed to: "_s + family.repeated(120));
    EXPECT_EQ(lineOf(Kind::selectionTextChanged(family.repeated(121))),
              u"[10:05:07] selection text changed to: "_s + family.repeated(117) + u'…');
}

TEST(WritingSessionLogTest, AnAskIsNeverCut) {
    EXPECT_EQ(lineOf(Kind::asked(QString(500, u'a'))),
              "[10:05:07] writer asked: " + QString(500, u'a'));
}

TEST(WritingSessionLogTest, KeepsTheLast24AndTellsOfTheLast12) {
    WritingSessionLog log;
    for (int i = 0; i < 30; ++i)
        log.record(at(i), Kind::asked(QString::number(i)));
    ASSERT_EQ(log.interactions().size(), 24U);
    EXPECT_EQ(log.interactions().front().kind, Kind::asked("6"));
    EXPECT_EQ(log.interactions().back().kind, Kind::asked("29"));
    const QStringList lines = log.contextBlock().split(u'\n');
    ASSERT_EQ(lines.size(), 13);
    EXPECT_EQ(lines[0], "Session interactions (use these to assist better — honor rejected takes, "
                        "prior asks, and the current selection):");
    EXPECT_EQ(lines[1], "[10:18:07] writer asked: 18");
    EXPECT_EQ(lines[12], "[10:29:07] writer asked: 29");
}

TEST(WritingSessionLogTest, NothingHappenedIsNoBlock) {
    EXPECT_EQ(WritingSessionLog().contextBlock(), QString());
}

} // namespace
} // namespace vorq
