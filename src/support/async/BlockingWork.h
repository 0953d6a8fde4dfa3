#pragma once

#include "support/async/Wakeup.h"

#include <QCoroTask>
#include <QThreadPool>

#include <concepts>
#include <exception>
#include <memory>
#include <optional>
#include <stop_token>
#include <type_traits>
#include <utility>

/// What `onPool()` and `BlockingThread` share; for these two only.
namespace vorq::blocking {

/// Work that blocks: called with the stop token, or with nothing if it cannot be stopped.
template<typename Work>
concept AnyWork = std::invocable<Work&, std::stop_token> || std::invocable<Work&>;

template<AnyWork Work>
auto perform(Work& work, const std::stop_token& stop) {
    if constexpr (std::invocable<Work&, std::stop_token>)
        return work(stop);
    else
        return work();
}

template<AnyWork Work>
using ResultOf = decltype(perform(std::declval<Work&>(), std::declval<const std::stop_token&>()));

/// A piece of work and what came of it: touched by the other thread until that has performed it,
/// then by the main thread.
template<AnyWork Work>
class Performance {
    using Result = ResultOf<Work>;

  public:
    Performance(Work work, std::stop_token stop)
        : m_work(std::move(work)), m_stop(std::move(stop)) {}

    void perform() {
        try {
            if constexpr (std::is_void_v<Result>)
                blocking::perform(m_work, m_stop);
            else
                m_result.emplace(blocking::perform(m_work, m_stop));
        } catch (...) {
            m_error = std::current_exception();
        }
    }

    /// Throws what the work threw.
    Result result() {
        if (m_error) std::rethrow_exception(std::exchange(m_error, nullptr));
        if constexpr (!std::is_void_v<Result>) {
            if (!m_result) std::terminate(); // asked before it was performed
            return *std::move(m_result);
        }
    }

  private:
    struct Nothing {};
    using Stored = std::conditional_t<std::is_void_v<Result>, Nothing, std::optional<Result>>;

    Work m_work;
    std::stop_token m_stop;
    Stored m_result;
    std::exception_ptr m_error;
};

/// The pool must live until the work has been performed.
template<AnyWork Work>
QCoro::Task<ResultOf<Work>> runOn(QThreadPool& pool, Work work, std::stop_token stop) {
    auto performance = std::make_shared<Performance<Work>>(std::move(work), std::move(stop));
    const Wakeup done;
    pool.start([performance, done]() mutable {
        performance->perform();
        // What the work holds dies on the main thread, which has the last reference.
        performance.reset();
        done.fireFromAnyThread();
    });
    co_await done;
    co_return performance->result();
}

} // namespace vorq::blocking
