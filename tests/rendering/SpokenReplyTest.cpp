#include "rendering/SpokenReply.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(SpokenReply, SaysWhatIsReadWithoutMarks) {
    EXPECT_EQ(spokenReply(u"# Leaves\n\nRed and **blue** `light`, [here](https://a.example)."),
              "Leaves\nRed and blue light, here.");
    EXPECT_EQ(spokenReply(u"**Label**\n\n> A *quote*.\n\n---\n\nEnd."), "Label\nA quote.\nEnd.");
}

TEST(SpokenReply, ItemsKeepTheirMarkers) {
    EXPECT_EQ(spokenReply(u"- **one**\n- two"), "• one\n• two");
    EXPECT_EQ(spokenReply(u"1. one\n2. two"), "1. one\n2. two");
}

TEST(SpokenReply, CodeIsSaidAsItIs) {
    EXPECT_EQ(spokenReply(u"```\na ** b\nc\n```"), "a ** b\nc");
}

TEST(SpokenReply, RowsOfATableAreLines) {
    EXPECT_EQ(spokenReply(u"| A | B |\n|---|---|\n| `1` | 2 |\n| 3 | 4 |"), "A, B\n1, 2\n3, 4");
}

TEST(SpokenReply, NothingIsSilence) {
    EXPECT_EQ(spokenReply(u""), "");
    EXPECT_EQ(spokenReply(u"---"), "");
}

} // namespace
} // namespace vorq
