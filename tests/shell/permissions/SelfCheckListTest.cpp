#include "shell/permissions/SelfCheckList.h"
#include "doubles/shell/SelfTestFixture.h"
#include "shell/permissions/SelfCheckTitles.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

class SelfCheckListTest : public testing::Test {
  protected:
    [[nodiscard]] QStringList verdicts() const {
        QStringList all;
        for (int row = 0; row < m_list.rowCount(); ++row)
            all += m_list.index(row).data(SelfCheckList::VerdictRole).toString();
        return all;
    }

    SelfCheckList m_list;
    QAbstractItemModelTester m_tester{&m_list,
                                      QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(SelfCheckListTest, ShowsAllFromTheBeginning) {
    m_list.begin({u"session"_s, u"tray"_s, u"notes"_s});
    EXPECT_EQ(verdicts(), QStringList({u"running"_s, u"waiting"_s, u"waiting"_s}));
    EXPECT_EQ(m_list.index(1).data(SelfCheckList::TitleRole).toString(), u"Tray");
    EXPECT_EQ(m_list.index(1).data(SelfCheckList::SentenceRole).toString(), QString());
}

TEST_F(SelfCheckListTest, GoesOnCheckByCheck) {
    m_list.begin({u"session"_s, u"tray"_s});
    const QSignalSpy changed(&m_list, &QAbstractItemModel::dataChanged);
    m_list.finishCheck({.id = u"session"_s,
                        .state = SelfCheckState::Failed,
                        .sentence = {"Nothing of %1.", {u"it"_s}},
                        .advice = {"Do that."},
                        .details = {u"Kate"_s}});
    EXPECT_EQ(verdicts(), QStringList({u"failed"_s, u"running"_s}));
    EXPECT_EQ(changed.count(), 1);
    const QModelIndex first = m_list.index(0);
    EXPECT_EQ(first.data(SelfCheckList::SentenceRole).toString(), u"Nothing of it.");
    EXPECT_EQ(first.data(SelfCheckList::AdviceRole).toString(), u"Do that.");
    EXPECT_EQ(first.data(SelfCheckList::DetailsRole).toStringList(), QStringList(u"Kate"_s));
    m_list.finishCheck({.id = u"tray"_s, .sentence = {"Fine."}});
    EXPECT_EQ(verdicts(), QStringList({u"failed"_s, u"ok"_s}));
    EXPECT_EQ(m_list.finished(), 2);
    m_list.finishCheck({.id = u"nobody's"_s, .sentence = {"Fine."}});
    EXPECT_EQ(m_list.rowCount(), 2);
}

TEST_F(SelfCheckListTest, EndedEarlyNoneRuns) {
    m_list.begin({u"session"_s, u"tray"_s});
    m_list.finishCheck({.id = u"session"_s, .sentence = {"Fine."}});
    m_list.end();
    EXPECT_EQ(verdicts(), QStringList({u"ok"_s, u"waiting"_s}));
}

TEST_F(SelfCheckListTest, AnotherRunForgetsTheFormer) {
    const QStringList ids{u"session"_s, u"tray"_s};
    m_list.begin(ids);
    m_list.finishCheck({.id = u"session"_s, .sentence = {"Fine."}});
    m_list.end();
    const QSignalSpy removed(&m_list, &QAbstractItemModel::rowsRemoved);
    m_list.begin(ids);
    EXPECT_EQ(removed.count(), 0);
    EXPECT_EQ(verdicts(), QStringList({u"running"_s, u"waiting"_s}));
    EXPECT_EQ(m_list.index(0).data(SelfCheckList::SentenceRole).toString(), QString());
    m_list.begin({u"notes"_s});
    EXPECT_EQ(verdicts(), QStringList(u"running"_s));
    m_list.begin({});
    EXPECT_EQ(m_list.rowCount(), 0);
}

class SelfCheckTitleTest : public SelfTestFixture {};

TEST_F(SelfCheckTitleTest, EachCheckHasOne) {
    for (const QString& id : m_test->ids())
        EXPECT_NE(selfCheckTitle(id), id) << qPrintable(id);
    EXPECT_EQ(selfCheckTitle(u"of tomorrow"_s), u"of tomorrow");
}

} // namespace
} // namespace vorq
