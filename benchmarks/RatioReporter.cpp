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
    std::printf("\nSpeed as a multiple of %s\n", m_peer.c_str());
    for (const std::string& caseName : m_cases) {
        const auto& times = m_times[caseName];
        const auto peer = times.find(m_peer);
        if (peer == times.end()) continue;
        std::printf("%-24s", caseName.c_str());
        for (const auto& [contender, time] : times) {
            if (contender != m_peer)
                std::printf("  %s %.2f", contender.c_str(), peer->second / time);
        }
        std::printf("\n");
    }
}

} // namespace vorq::bench
