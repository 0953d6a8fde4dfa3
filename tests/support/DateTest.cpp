#include "support/Date.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace std::chrono;

TEST(Date, ReadsAndWritesTheInternetFormInUtc) {
    const Date date = sys_days(year(2026) / 3 / 1) + 10h + 20min + 30s;
    EXPECT_EQ(isoDate(date), "2026-03-01T10:20:30Z");
    EXPECT_EQ(dateFromIso("2026-03-01T10:20:30Z"), date);
}

TEST(Date, CutsOffWhatIsBelowASecondAlsoBeforeTheEpoch) {
    EXPECT_EQ(isoDate(Date(999ms)), "1970-01-01T00:00:00Z");
    EXPECT_EQ(isoDate(Date(-1ms)), "1969-12-31T23:59:59Z");
}

TEST(Date, TakesNoOtherForm) {
    for (const char* text :
         {"2026-03-01T10:20:30.5Z", "2026-03-01T10:20:30", "2026-03-01T10:20:30+00:00",
          "2026-03-01t10:20:30z", "2026-03-01 10:20:30Z", "2026-3-01T10:20:30Z",
          " 026-03-01T10:20:30Z", "2026-03-01T10:20:30Z ", "x", ""})
        EXPECT_EQ(dateFromIso(text), std::nullopt) << text;
}

TEST(Date, TakesNoMomentThatNoCalendarHas) {
    for (const char* text : {"2026-02-29T10:20:30Z", "2026-13-01T10:20:30Z", "2026-00-01T10:20:30Z",
                             "2026-03-00T10:20:30Z", "2026-03-01T24:00:00Z", "2026-03-01T10:60:30Z",
                             "2026-03-01T10:20:60Z"})
        EXPECT_EQ(dateFromIso(text), std::nullopt) << text;
    EXPECT_NE(dateFromIso("2024-02-29T23:59:59Z"), std::nullopt);
}

} // namespace
} // namespace vorq
