// What views hear of a list.

#include "areas/LibraryLists.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <random>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class RecordListTest : public testing::Test {
  protected:
    RecordListTest() {
        for (int index = 0; index < 6; ++index) {
            SavedNote& note = m_notesApplication.emplace_back();
            note.id = QUuid::createUuid();
            note.text = QString::number(index);
            note.createdAt = Date(1'700'000'000s);
        }
    }

    [[nodiscard]] std::vector<SavedNote> notes(std::initializer_list<std::size_t> indices) const {
        std::vector<SavedNote> picked;
        for (const std::size_t index : indices)
            picked.push_back(m_notesApplication[index]);
        return picked;
    }

    void forget() {
        for (QSignalSpy* spy : {&m_inserted, &m_removed, &m_moved, &m_data, &m_reset, &m_changed})
            spy->clear();
    }

    std::vector<SavedNote> m_notesApplication;
    NoteList m_list;
    QAbstractItemModelTester m_tester{&m_list,
                                      QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy m_inserted{&m_list, &QAbstractItemModel::rowsInserted};
    QSignalSpy m_removed{&m_list, &QAbstractItemModel::rowsRemoved};
    QSignalSpy m_moved{&m_list, &QAbstractItemModel::rowsMoved};
    QSignalSpy m_data{&m_list, &QAbstractItemModel::dataChanged};
    QSignalSpy m_reset{&m_list, &QAbstractItemModel::modelReset};
    QSignalSpy m_changed{&m_list, &RecordListModel::changed};
};

TEST_F(RecordListTest, AnEmptyListIsFilledAtOnce) {
    m_list.replace(m_notesApplication);
    ASSERT_EQ(m_inserted.count(), 1);
    EXPECT_EQ(m_inserted[0][1].toInt(), 0);
    EXPECT_EQ(m_inserted[0][2].toInt(), 5);
    EXPECT_EQ(m_changed.count(), 1);
    EXPECT_EQ(m_list.records(), m_notesApplication);
}

TEST_F(RecordListTest, TheSameListAgainIsNoChange) {
    m_list.replace(m_notesApplication);
    forget();
    m_list.replace(m_notesApplication);
    EXPECT_EQ(m_inserted.count() + m_removed.count() + m_moved.count() + m_data.count(), 0);
    EXPECT_EQ(m_changed.count(), 0);
}

TEST_F(RecordListTest, OnlyWhatIsGoneIsRemovedAndInRuns) {
    m_list.replace(m_notesApplication);
    forget();
    m_list.replace(notes({0, 3, 5}));
    ASSERT_EQ(m_removed.count(), 2);
    EXPECT_EQ(m_removed[0][1].toInt(), 4);
    EXPECT_EQ(m_removed[1][1].toInt(), 1);
    EXPECT_EQ(m_removed[1][2].toInt(), 2);
    EXPECT_EQ(m_inserted.count() + m_moved.count() + m_data.count(), 0);
}

TEST_F(RecordListTest, ARecordThatChangesPlaceIsMoved) {
    m_list.replace(m_notesApplication);
    forget();
    m_list.replace(notes({4, 0, 1, 2, 3, 5}));
    ASSERT_EQ(m_moved.count(), 1);
    EXPECT_EQ(m_moved[0][1].toInt(), 4);
    EXPECT_EQ(m_moved[0][4].toInt(), 0);
    EXPECT_EQ(m_inserted.count() + m_removed.count() + m_data.count(), 0);
}

TEST_F(RecordListTest, AChangedRecordTellsWhichRolesReadDifferently) {
    m_list.replace(m_notesApplication);
    forget();
    m_list.edit(m_notesApplication[2].id, [](SavedNote& note) { note.area = HubArea::Study; });
    ASSERT_EQ(m_data.count(), 1);
    EXPECT_EQ(m_data[0][0].toModelIndex().row(), 2);
    EXPECT_THAT(m_data[0][2].value<QList<int>>(), ElementsAre(NoteList::AreaRole));
    EXPECT_EQ(m_list.index(2).data(NoteList::AreaRole), "study");
    EXPECT_EQ(m_changed.count(), 1);
}

TEST_F(RecordListTest, WhatNoRoleShowsChangesOnlyTheRecord) {
    m_list.replace(m_notesApplication);
    forget();
    m_list.edit(m_notesApplication[2].id, [](SavedNote& note) { note.thoughtsRTF = "{}"; });
    EXPECT_EQ(m_data.count(), 0);
    EXPECT_EQ(m_changed.count(), 1);
}

TEST_F(RecordListTest, AnUnknownIdChangesNothing) {
    m_list.replace(m_notesApplication);
    forget();
    EXPECT_FALSE(m_list.edit(QUuid::createUuid(), [](SavedNote& note) { note.text = "x"; }));
    m_list.removeAll(QUuid::createUuid());
    EXPECT_EQ(m_changed.count(), 0);
}

TEST_F(RecordListTest, NewRecordsEnterAtTheTop) {
    m_list.replace(notes({0, 1}));
    forget();
    m_list.insertFirst(m_notesApplication[2]);
    EXPECT_EQ(m_list.records(), notes({2, 0, 1}));
    ASSERT_EQ(m_inserted.count(), 1);
    EXPECT_EQ(m_inserted[0][2].toInt(), 0);
}

TEST_F(RecordListTest, RecordsOfOneIdAreRemovedTogether) {
    m_list.replace(notes({0, 1, 0, 0}));
    m_list.removeAll(m_notesApplication[0].id);
    EXPECT_EQ(m_list.records(), notes({1}));
}

TEST_F(RecordListTest, AnyListFollowsAnyOtherWithoutAReset) {
    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        std::vector<SavedNote> next;
        for (std::size_t count = random() % 9; count > 0; --count) {
            next.push_back(
                m_notesApplication[random() %
                                   m_notesApplication.size()]); // the same one twice at times
            if (random() % 4 == 0) next.back().text += u'x';
        }
        m_list.replace(next);
        ASSERT_EQ(m_list.records(), next);
    }
    EXPECT_EQ(m_reset.count(), 0);
}

TEST_F(RecordListTest, ShowsANoteByItsRoles) {
    m_notesApplication[0].thoughts = "**Plan**\nfirst\nsecond";
    m_notesApplication[0].flashcards = {{QUuid::createUuid(), "front", "back"}};
    m_list.replace(notes({0}));
    const QModelIndex row = m_list.index(0);
    EXPECT_EQ(row.data(NoteList::IdRole).toUuid(), m_notesApplication[0].id);
    EXPECT_EQ(row.data(), "Plan");
    EXPECT_EQ(row.data(NoteList::SnippetRole), "first second");
    EXPECT_EQ(row.data(NoteList::AreaRole), "personal");
    EXPECT_EQ(row.data(NoteList::FlashcardCountRole), 1);
    EXPECT_EQ(row.data(NoteList::CreatedAtRole).toDateTime().toSecsSinceEpoch(), 1'700'000'000);
    EXPECT_EQ(m_list.count(), 1);
}

} // namespace
} // namespace vorq
