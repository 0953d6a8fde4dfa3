#include "support/RawNames.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

enum class Season { Spring, Summer, Autumn, Winter };

constexpr auto seasons = rawNames<Season>({{Season::Spring, "spring"},
                                           {Season::Summer, "summer"},
                                           {Season::Autumn, "autumn"},
                                           {Season::Autumn, "fall"}});

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
