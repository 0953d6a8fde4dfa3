#pragma once

#include "platform/PrimarySelection.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace vorq {

/// A highlight that a test sets.
class ScriptedPrimarySelection final : public PrimarySelection {
  public:
    std::optional<ProcessId> owner;
    Highlight highlight;
    std::atomic<int> reads = 0;
    /// While set, a read comes back only when its token is stopped.
    std::atomic<bool> hangs = false;
    /// How many reads wait for that.
    std::atomic<int> hanging = 0;

    [[nodiscard]] std::optional<Highlight> highlightOf(ProcessId process,
                                                       std::stop_token stop) override {
        ++reads;
        if (hangs) hang(stop);
        if (stop.stop_requested() || owner != process) return std::nullopt;
        return highlight;
    }

  private:
    void hang(const std::stop_token& stop) {
        std::mutex mutex;
        std::condition_variable_any never;
        std::unique_lock lock(mutex);
        ++hanging;
        never.wait(lock, stop, [] { return false; });
        --hanging;
    }
};

} // namespace vorq
