#include "Rounds.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <regex>
#include <thread>

namespace vorq::bench {
namespace {

// Lets what one contender leaves to the system end before the next has its turn.
constexpr std::chrono::milliseconds rest{30};

double millisecondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

double median(const std::vector<double>& sorted) {
    return sorted[sorted.size() / 2];
}

} // namespace

bool isWanted(const std::string& caseName) {
    const std::string filter = benchmark::GetBenchmarkFilter();
    return filter.empty() || filter == "all" || std::regex_search(caseName, std::regex(filter));
}

void runInTurn(const std::string& caseName, const std::vector<Contender>& contenders, int rounds) {
    if (!isWanted(caseName)) return;
    std::vector<std::vector<double>> times(contenders.size());
    for (std::size_t turn = 0; turn < static_cast<std::size_t>(rounds); ++turn) {
        for (std::size_t place = 0; place < contenders.size(); ++place) {
            const std::size_t index = turn % 2 == 0 ? place : contenders.size() - 1 - place;
            std::this_thread::sleep_for(rest);
            times[index].push_back(millisecondsOf(contenders[index].work));
        }
    }
    for (std::vector<double>& each : times)
        std::ranges::sort(each);
    std::printf("\n%s, %d rounds in turn\n", caseName.c_str(), rounds);
    for (std::size_t index = 0; index < contenders.size(); ++index) {
        const std::vector<double>& each = times[index];
        std::printf("  %-12s least %7.2f ms  median %7.2f ms  most %7.2f ms  ratio %.2f\n",
                    contenders[index].name.c_str(), each.front(), median(each), each.back(),
                    median(times.back()) / median(each));
    }
}

} // namespace vorq::bench
