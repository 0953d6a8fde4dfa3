#include "http/WorkerPool.h"

#include <utility>

namespace vorq::gateway {

WorkerPool::WorkerPool(std::size_t threads, std::size_t longestQueue)
    : m_longestQueue(longestQueue) {
    for (std::size_t i = 0; i < threads; ++i)
        m_threads.emplace_back([this] { run(); });
}

WorkerPool::~WorkerPool() {
    {
        const std::scoped_lock lock(m_mutex);
        m_ending = true;
    }
    m_changed.notify_all();
    for (std::thread& thread : m_threads)
        thread.join();
}

bool WorkerPool::submit(Job job) {
    {
        const std::scoped_lock lock(m_mutex);
        if (m_queue.size() >= m_longestQueue) return false;
        m_queue.push_back(std::move(job));
    }
    m_changed.notify_one();
    return true;
}

void WorkerPool::run() {
    std::unique_lock lock(m_mutex);
    while (true) {
        m_changed.wait(lock, [this] { return m_ending || !m_queue.empty(); });
        if (m_ending) return;
        Job job = std::move(m_queue.front());
        m_queue.pop_front();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
    }
}

} // namespace vorq::gateway
