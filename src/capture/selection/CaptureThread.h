#pragma once

#include "platform/Clock.h"

#include <QCoroTask>
#include <QThread>

#include <functional>
#include <memory>
#include <stop_token>

namespace vorq {

/// A thread for what blocks while it reads other applications; it does one thing at a time. Main
/// thread only.
class CaptureThread {
  public:
    /// Runs on the thread; it comes to its end soon when the token is stopped.
    using Job = std::function<void(std::stop_token)>;

    explicit CaptureThread(Clock& clock);
    CaptureThread(const CaptureThread&) = delete;
    CaptureThread& operator=(const CaptureThread&) = delete;
    /// Stops what is under way, and waits for it to see that.
    ~CaptureThread();

    /// Runs the job after those before it. True once it has ended by itself; false as soon as the
    /// limit is over, the token is stopped or the thread is gone, and then it is stopped and
    /// whatever it writes to must outlive it. The clock must outlive the wait.
    QCoro::Task<bool> run(Job job, Clock::Duration limit, std::stop_token stop);

  private:
    struct Run;

    Clock& m_clock;
    QThread m_thread;
    QObject* m_worker;
    std::stop_source m_stop;
};

} // namespace vorq
