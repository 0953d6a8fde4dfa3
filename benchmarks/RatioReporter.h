#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace vorq::bench {

/// Prints the usual table and then, for each case, how many times as fast each contender is as the
/// first of the peers that takes part in it. Benchmarks are named "contender/case".
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    explicit RatioReporter(std::vector<std::string> peers) : m_peers(std::move(peers)) {}

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

  private:
    std::vector<std::string> m_peers;
    std::vector<std::string> m_cases;
    // Nanoseconds of the processor for one iteration by case and contender; the best run counts.
    std::map<std::string, std::map<std::string, double>> m_times;
};

} // namespace vorq::bench
