#include "RatioReporter.h"

#include <algorithm>
#include <cstdio>

namespace vorq::bench {

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.find('/');
        if (run.run_type != Run::RT_Iteration || run.iterations == 0 || slash == std::string::npos)
            continue;
        const std::string caseName = name.substr(slash + 1);
        if (!m_times.contains(caseName)) m_cases.push_back(caseName);
        const double time = run.cpu_accumulated_time * 1e9 / static_cast<double>(run.iterations);
        const auto [known, added] = m_times[caseName].try_emplace(name.substr(0, slash), time);
        if (!added) known->second = std::min(known->second, time);
    }
}

void RatioReporter::Finalize() {
    std::printf("\nSpeed\n");
    for (const std::string& caseName : m_cases) {
        const auto& times = m_times[caseName];
        const auto found = std::ranges::find_if(
            m_peers, [&times](const std::string& name) { return times.contains(name); });
        if (found == m_peers.end()) continue;
        const auto peer = times.find(*found);
        std::printf("%-24s as a multiple of %s:", caseName.c_str(), found->c_str());
        for (const auto& [contender, time] : times) {
            if (contender != *found)
                std::printf("  %s %.2f", contender.c_str(), peer->second / time);
        }
        std::printf("\n");
    }
}

} // namespace vorq::bench
