#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace vorq::gateway {

/// A fixed number of threads for work that computes or waits for the disk. Thread-safe.
class WorkerPool {
  public:
    using Job = std::move_only_function<void()>;

    /// No more than `longestQueue` jobs wait for a thread.
    WorkerPool(std::size_t threads, std::size_t longestQueue);
    /// Waits for the jobs that run; those that wait are dropped.
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    /// False if too many wait already. A job must not throw.
    [[nodiscard]] bool submit(Job job);

  private:
    void run();

    std::size_t m_longestQueue;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Job> m_queue;
    bool m_ending = false;
    std::vector<std::thread> m_threads;
};

} // namespace vorq::gateway
