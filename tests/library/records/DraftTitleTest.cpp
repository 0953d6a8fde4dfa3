#include "library/records/DraftTitle.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

TEST(DraftTitle, IsTheFirstLineWithoutItsMarkup) {
    EXPECT_EQ(draftTitle(u"\n\n first\nsecond"), "first");
    EXPECT_EQ(draftTitle(u"**Rivers**\nsilt"), "Rivers");
}

TEST(DraftTitle, IsCutAfter80Characters) {
    EXPECT_EQ(draftTitle(QString(200, u'x')), QString(80, u'x'));
    const QString family = u"👩‍👩‍👧"_s;
    EXPECT_EQ(draftTitle(family.repeated(81)), family.repeated(80));
}

TEST(DraftTitle, OfNothingIsVorq) {
    EXPECT_EQ(draftTitle(u"  \n"), "Vorq");
}

} // namespace
} // namespace vorq
