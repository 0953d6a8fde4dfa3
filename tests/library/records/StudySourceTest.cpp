#include "library/records/StudySource.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

TEST(StudySource, PrefersTheBody) {
    EXPECT_EQ(studySource(u"seed", u" body\n"), "body");
}

TEST(StudySource, FallsBackOnTheSeedOfABlankBody) {
    EXPECT_EQ(studySource(u" seed ", u" \n"), "seed");
    EXPECT_EQ(studySource(u"", u""), "");
}

} // namespace
} // namespace vorq
