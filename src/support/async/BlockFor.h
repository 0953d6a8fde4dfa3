#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>

namespace vorq {

/// Blocks the thread for so long, or until the token is stopped. Not for the main thread.
inline void blockFor(std::chrono::milliseconds time, const std::stop_token& stop) {
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    never.wait_for(lock, stop, time, [] { return false; });
}

} // namespace vorq
