#include "capture/selection/CaptureThread.h"

#include "support/async/Wakeup.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <atomic>
#include <utility>

namespace vorq {

struct CaptureThread::Run {
    Job job;
    std::stop_source stop;
    std::atomic<bool> isDone = false;
    // Of the main thread.
    Wakeup wake;
    bool hasEnded = false;
};

CaptureThread::CaptureThread(Clock& clock) : m_clock(clock), m_worker(new QObject) {
    m_thread.setObjectName(QStringLiteral("vorq-capture"));
    m_worker->moveToThread(&m_thread);
    QObject::connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    m_thread.start();
}

CaptureThread::~CaptureThread() {
    m_stop.request_stop();
    m_thread.quit();
    m_thread.wait();
}

QCoro::Task<bool> CaptureThread::run(Job job, Clock::Duration limit, std::stop_token stop) {
    // After the wait this object may be gone, so all that is needed is kept here.
    Clock& clock = m_clock;
    const auto running = std::make_shared<Run>();
    running->job = std::move(job);
    const auto end = [running] {
        running->stop.request_stop();
        running->wake.fire();
    };
    const std::stop_callback onStop(std::move(stop), end);
    const std::stop_callback onDestruction(m_stop.get_token(), end);
    // While the main thread is busy, as with the first picture of a window, the limit may be seen
    // before the end that came in time.
    const Clock::TimerId timer = clock.after(limit, [running, end] {
        if (!running->isDone) end();
    });
    QMetaObject::invokeMethod(
        m_worker,
        [running] {
            if (!running->stop.stop_requested()) running->job(running->stop.get_token());
            running->isDone = true;
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [running] {
                    running->hasEnded = true;
                    running->wake.fire();
                },
                Qt::QueuedConnection);
        },
        Qt::QueuedConnection);
    co_await running->wake;
    clock.cancel(timer);
    co_return running->hasEnded && !running->stop.stop_requested();
}

} // namespace vorq
