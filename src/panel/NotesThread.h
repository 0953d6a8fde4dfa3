#pragma once

#include "platform/NotesBridge.h"
#include "support/async/Wakeup.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QMetaObject>
#include <QThreadPool>

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace vorq {

/// The thread on which the user's notes application is asked, one operation after the other. An
/// application that hangs keeps only this thread waiting. Main thread only.
class NotesThread {
  public:
    /// The bridge must outlive this object.
    explicit NotesThread(NotesBridge& bridge) : m_bridge(bridge) { m_thread.setMaxThreadCount(1); }
    NotesThread(const NotesThread&) = delete;
    NotesThread& operator=(const NotesThread&) = delete;
    /// Finishes what was begun or waits its turn: some of it may be the user's text on its way.
    ~NotesThread() { m_thread.waitForDone(); }

    /// Runs the operation after those before it and gives its result. It goes on if whoever waits
    /// is gone, so it must own what it reads.
    template<typename Operation>
    QCoro::Task<std::invoke_result_t<Operation, NotesBridge&>> run(Operation operation) {
        using Result = std::invoke_result_t<Operation, NotesBridge&>;
        const auto result = std::make_shared<std::optional<Result>>();
        const Wakeup done;
        m_thread.start([bridge = &m_bridge, operation = std::move(operation), result, done] {
            *result = operation(*bridge);
            QMetaObject::invokeMethod(
                QCoreApplication::instance(), [done] { done.fire(); }, Qt::QueuedConnection);
        });
        co_await done;
        co_return *std::move(*result);
    }

  private:
    NotesBridge& m_bridge;
    QThreadPool m_thread;
};

} // namespace vorq
