#include "capture/copy/ReplacementText.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

TEST(ReplacementText, KeepsTheEndsOfTheOriginal) {
    EXPECT_EQ(fittedTo("  old words\n", "new words"), "  new words\n");
    EXPECT_EQ(fittedTo("old", "\n new \n"), "new");
    EXPECT_EQ(fittedTo("\told\t", " "), "\t\t");
}

TEST(ReplacementText, KeepsTheNewlinesOfTheOriginal) {
    EXPECT_EQ(fittedTo("one\r\ntwo", "1\n2\n3"), "1\r\n2\r\n3");
    EXPECT_EQ(fittedTo("one\ntwo", "1\r\n2\r3"), "1\n2\n3");
    EXPECT_EQ(fittedTo("one\rtwo", "1\n2"), "1\r2");
    EXPECT_EQ(fittedTo("old\r\n", "1\n2"), "1\r\n2\r\n");
}

TEST(ReplacementText, KeepsItsOwnWhereTheOriginalHasNone) {
    EXPECT_EQ(fittedTo("old", "1\r\n2"), "1\r\n2");
    EXPECT_EQ(fittedTo("", " new "), " new ");
    EXPECT_EQ(fittedTo(" \n ", " new "), " new ");
}

} // namespace
} // namespace vorq
