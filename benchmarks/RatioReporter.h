#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace vorq::bench {

/// Prints the usual table and then, for each case, how many times as fast each contender is as the
/// peer. Benchmarks are named "contender/case".
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    explicit RatioReporter(std::string peer) : m_peer(std::move(peer)) {}

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

  private:
    std::string m_peer;
    std::vector<std::string> m_cases;
    // Nanoseconds of processor time for one iteration, by case and contender; the best run counts.
    std::map<std::string, std::map<std::string, double>> m_times;
};

} // namespace vorq::bench
