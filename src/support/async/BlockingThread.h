#pragma once

#include "support/async/BlockingWork.h"

#include <cstdint>

namespace vorq {

/// A thread for work that blocks and that is done one after the other, in the order in which it was
/// asked for. Main thread only.
///
/// All work runs, and each result comes, or what the work threw is thrown, from the event loop,
/// even when this object or whoever asked is gone by then. Stopping is cooperative, as with
/// `onPool()`: work that is stopped before it begins is called all the same, stopped.
class BlockingThread {
  public:
    /// What becomes of the work that is under way or waits its turn when this object goes; in
    /// either case its end is waited for.
    enum class AtEnd : std::uint8_t {
        Finish, ///< it is done, as what the user wants kept is
        Stop,   ///< it is stopped, as what only reads is
    };

    explicit BlockingThread(AtEnd atEnd) : m_atEnd(atEnd) { m_thread.setMaxThreadCount(1); }
    BlockingThread(const BlockingThread&) = delete;
    BlockingThread& operator=(const BlockingThread&) = delete;
    ~BlockingThread();

    /// Runs the work after that before it. It may use what outlives this object, and owns the rest;
    /// what it owns is destroyed on the main thread.
    template<blocking::AnyWork Work>
    QCoro::Task<blocking::ResultOf<Work>> run(Work work, std::stop_token stop) {
        std::stop_source source;
        const auto forward = [source]() mutable { source.request_stop(); };
        const std::stop_callback onStop(std::move(stop), forward);
        const std::stop_callback onEnd(m_end.get_token(), forward);
        co_return co_await blocking::runOn(m_thread, std::move(work), source.get_token());
    }

  private:
    AtEnd m_atEnd;
    std::stop_source m_end;
    QThreadPool m_thread; // of one thread
};

} // namespace vorq
