#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vorq::bench {

struct Contender {
    std::string name;
    std::function<void()> work;
};

/// Whether the filter of the command line leaves the case in.
[[nodiscard]] bool isWanted(const std::string& caseName);

/// For work that waits for the disk, where a busy moment would strike whoever has his turn: lets
/// the contenders run in turn, in changing order, and prints for each its times by the clock and
/// how many times as fast as the last of them it is, by the medians. Does nothing if the filter of
/// the command line leaves the case out.
void runInTurn(const std::string& caseName, const std::vector<Contender>& contenders, int rounds);

} // namespace vorq::bench
