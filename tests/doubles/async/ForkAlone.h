#pragma once

#include "support/async/OnPool.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>
#include <unistd.h>

namespace vorq {

/// Copies a process without other threads: a lock that one of them held would be held in the copy
/// for good. Waits for the pool's; any others fail the test.
inline pid_t forkAlone() {
    blocking::pool().waitForDone();
    const auto countThreads = [] {
        using Entries = std::filesystem::directory_iterator;
        return std::distance(Entries("/proc/self/task"), Entries());
    };
    // One that has ended is told for a moment yet.
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (countThreads() > 1 && std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    EXPECT_EQ(countThreads(), 1);
    return ::fork();
}

} // namespace vorq
