#include "support/RawNames.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

enum class Season { Spring, Summer, Autumn, Winter };

constexpr RawName<Season> rows[] = {{Season::Spring, "spring"},
                                    {Season::Summer, "summer"},
                                    {Season::Autumn, "autumn"},
                                    {Season::Autumn, "fall"}};
constexpr auto seasons = rawNamesOfSome<Season>(rows);

// A table for what is stored must name each case, or it does not compile.
static_assert(!raw_names::nameEveryCase(rows));
static_assert(raw_names::nameEveryCase<Season>(
    {{Season::Spring, ""}, {Season::Winter, ""}, {Season::Autumn, ""}, {Season::Summer, ""}}));
static_assert(raw_names::isCase<Season::Winter>());
static_assert(!raw_names::isCase<static_cast<Season>(4)>());

TEST(RawNames, EachNameIsThatOfItsCase) {
    EXPECT_EQ(seasons.caseOf(u"summer"), Season::Summer);
    EXPECT_EQ(seasons.nameOf(Season::Summer), "summer");
    EXPECT_EQ(seasons.latin1(Season::Spring), "spring");
}

TEST(RawNames, OfSeveralNamesTheFirstIsWritten) {
    EXPECT_EQ(seasons.caseOf(u"fall"), Season::Autumn);
    EXPECT_EQ(seasons.nameOf(Season::Autumn), "autumn");
}

TEST(RawNames, WhatIsNotInTheTableIsNothing) {
    EXPECT_EQ(seasons.caseOf(u"Summer"), std::nullopt);
    EXPECT_EQ(seasons.caseOf(u""), std::nullopt);
    EXPECT_EQ(seasons.caseOf(std::optional<QString>()), std::nullopt);
    EXPECT_EQ(seasons.nameOf(Season::Winter), "");
}

// Files are read in place, where no zero ends a text.
TEST(RawNames, BytesEndWhereTheirViewEnds) {
    EXPECT_EQ(seasons.caseOf(QByteArrayView("springtime", 6)), Season::Spring);
    EXPECT_EQ(seasons.caseOf(QByteArrayView("sprin")), std::nullopt);
}

} // namespace
} // namespace vorq
