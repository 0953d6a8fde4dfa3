#include "http/WorkerPool.h"

#include <utility>

namespace vorq::gateway {

WorkerPool::WorkerPool(std::size_t threads, std::size_t longestQueue)
    : longestQueue_(longestQueue) {
    for (std::size_t i = 0; i < threads; ++i)
        threads_.emplace_back([this] { run(); });
}

WorkerPool::~WorkerPool() {
    {
        const std::scoped_lock lock(mutex_);
        ending_ = true;
    }
    changed_.notify_all();
    for (std::thread& thread : threads_)
        thread.join();
}

bool WorkerPool::submit(Job job) {
    {
        const std::scoped_lock lock(mutex_);
        if (queue_.size() >= longestQueue_) return false;
        queue_.push_back(std::move(job));
    }
    changed_.notify_one();
    return true;
}

void WorkerPool::run() {
    std::unique_lock lock(mutex_);
    while (true) {
        changed_.wait(lock, [this] { return ending_ || !queue_.empty(); });
        if (ending_) return;
        Job job = std::move(queue_.front());
        queue_.pop_front();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
    }
}

} // namespace vorq::gateway
