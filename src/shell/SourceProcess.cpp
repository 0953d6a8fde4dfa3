#include "shell/SourceProcess.h"

namespace vorq {

std::optional<SelectionCapture::ProcessId> resolveSourcePID(const SourceCandidates& candidates) {
    const auto isForeign = [&](const std::optional<SelectionCapture::ProcessId>& process) {
        return process && *process != candidates.own;
    };
    if (isForeign(candidates.given) && *candidates.given >= 1) return candidates.given;
    if (isForeign(candidates.lastForeign)) return candidates.lastForeign;
    if (isForeign(candidates.frontmost)) return candidates.frontmost;
    return std::nullopt;
}

} // namespace vorq
