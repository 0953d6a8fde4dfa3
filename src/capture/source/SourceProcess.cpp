#include "capture/source/SourceProcess.h"

namespace vorq {

std::optional<ProcessId> resolveSourcePID(const SourceCandidates& candidates) {
    const auto isForeign = [&](const std::optional<ProcessId>& process) {
        return process && *process != candidates.own;
    };
    if (isForeign(candidates.given) && *candidates.given >= 1) return candidates.given;
    if (isForeign(candidates.lastForeign)) return candidates.lastForeign;
    if (isForeign(candidates.frontmost)) return candidates.frontmost;
    return std::nullopt;
}

} // namespace vorq
