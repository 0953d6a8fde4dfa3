#include "support/StableSort.h"

#include <gtest/gtest.h>

#include <string>

namespace vorq {
namespace {

using Entry = std::pair<int, std::string>;

bool byNumber(const Entry& a, const Entry& b) {
    return a.first < b.first;
}

TEST(StableSort, EqualValuesKeepTheirOrder) {
    std::vector<Entry> entries;
    for (int index = 0; index < 100; ++index)
        entries.emplace_back(index % 3, std::to_string(index));
    stableSort(entries, byNumber);
    ASSERT_EQ(entries.size(), 100U);
    for (std::size_t index = 1; index < entries.size(); ++index) {
        const Entry& before = entries[index - 1];
        const Entry& after = entries[index];
        EXPECT_LE(before.first, after.first);
        if (before.first == after.first)
            EXPECT_LT(std::stoi(before.second), std::stoi(after.second));
    }
}

TEST(StableSort, TakesAnEmptyList) {
    std::vector<Entry> entries;
    stableSort(entries, byNumber);
    EXPECT_TRUE(entries.empty());
}

} // namespace
} // namespace vorq
