#pragma once

#include <QCoroTask>

#include <cstdint>
#include <functional>
#include <stop_token>
#include <vector>

namespace vorq {

/// The field that holds a running task: at most one handle, replaced by restart().
///
/// A body starts on a later turn of the event loop, stopped already if it was cancelled by then.
/// Stopping is cooperative: the body sees it on its stop token after each wait. When the slot is
/// destroyed every body it ever started and that still runs is stopped, and one that has not begun
/// never does; so a body must check after each wait whether its owner is still there. An exception
/// that leaves a body is logged. Main thread only.
class TaskSlot {
  public:
    using Body = std::function<QCoro::Task<>(std::stop_token)>;

    TaskSlot() = default;
    TaskSlot(const TaskSlot&) = delete;
    TaskSlot& operator=(const TaskSlot&) = delete;
    ~TaskSlot();

    /// Stops the task in the slot, if any, and starts the body in its place.
    void restart(Body body);

    /// Stops the task in the slot and empties the slot.
    void cancel();

    /// Stops the task in the slot and every released one that still runs, and empties the slot.
    void cancelAll();

    /// Empties the slot but lets its task run on.
    void release();

    /// Whether a task is in the slot. A body that ends empties the slot unless it was replaced.
    [[nodiscard]] bool isRunning() const { return m_current != 0; }

  private:
    struct Shared;
    struct Entry {
        std::uint64_t id;
        std::stop_source stop;
    };

    static QCoro::Task<> drive(std::shared_ptr<Shared> shared, std::uint64_t id, Body body,
                               std::stop_token stop);
    void stopEntry(std::uint64_t id);

    std::shared_ptr<Shared> m_shared;
    std::uint64_t m_current = 0;
    std::uint64_t m_last = 0;
    std::vector<Entry> m_entries;
};

} // namespace vorq
