// The engine where memory is short. In a process of its own, of which the rest is taken away.

#include "engine/embedded/words/WordKin.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <vector>

namespace vorq::gateway::testing {
namespace {

rlim_t addressSpace() {
    std::ifstream sizes("/proc/self/statm");
    rlim_t pages = 0;
    sizes >> pages;
    return pages * 4096;
}

/// All the memory that this process can still have.
class TakenMemory {
  public:
    TakenMemory() {
        m_pieces.reserve(std::size_t{1} << 20);
        const rlimit limit{addressSpace(), RLIM_INFINITY};
        setrlimit(RLIMIT_AS, &limit);
        for (std::size_t size = std::size_t{1} << 20; size >= 16; size /= 2) {
            while (char* piece = new (std::nothrow) char[size])
                m_pieces.emplace_back(piece);
        }
    }

  private:
    std::vector<std::unique_ptr<char[]>> m_pieces;
};

[[noreturn]] void readWordsTwice() {
    bool isShort = false;
    {
        const TakenMemory taken;
        try {
            static_cast<void>(kinOf(Language::English));
        } catch (const std::bad_alloc&) {
            isShort = true;
        }
    }
    static_cast<void>(kinOf(Language::English));
    std::_Exit(isShort ? 0 : 1);
}

TEST(ShortMemoryDeathTest, WordsThatDidNotFitAreReadTheNextTime) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(readWordsTwice(), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace vorq::gateway::testing
