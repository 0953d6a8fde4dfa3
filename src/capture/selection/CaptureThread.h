#pragma once

#include "platform/Clock.h"
#include "support/async/BlockingThread.h"

#include <QCoroTask>

#include <functional>
#include <memory>
#include <stop_token>

namespace vorq {

/// A thread for what blocks while it reads other applications, each read within a limit of time; it
/// does one thing at a time. Main thread only.
class CaptureThread {
  public:
    /// Runs on the thread; it comes to its end soon when the token is stopped.
    using Job = std::function<void(std::stop_token)>;

    explicit CaptureThread(Clock& clock) : m_clock(clock) {}
    CaptureThread(const CaptureThread&) = delete;
    CaptureThread& operator=(const CaptureThread&) = delete;
    /// Stops what is under way, and waits for it to see that.
    ~CaptureThread() { m_stop.request_stop(); }

    /// Runs the job after those before it. True once it has ended by itself; false as soon as the
    /// limit is over, the token is stopped or the thread is gone, and then it is stopped and
    /// whatever it writes to must outlive it. The clock must outlive this object.
    QCoro::Task<bool> run(Job job, Clock::Duration limit, std::stop_token stop);

  private:
    struct Run;
    static QCoro::Task<> perform(BlockingThread& thread, std::shared_ptr<Run> running, Job job);

    Clock& m_clock;
    std::stop_source m_stop;
    BlockingThread m_thread{BlockingThread::AtEnd::Stop};
};

} // namespace vorq
