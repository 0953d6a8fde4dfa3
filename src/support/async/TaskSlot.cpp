#include "support/async/TaskSlot.h"

#include "support/async/SupportLog.h"
#include "support/async/Wakeup.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

namespace vorq {

// Lets a body that ends find the slot, or find that the slot is gone.
struct TaskSlot::Shared {
    TaskSlot* slot;
};

TaskSlot::~TaskSlot() {
    if (m_shared) m_shared->slot = nullptr;
    for (Entry& entry : m_entries)
        entry.stop.request_stop();
}

void TaskSlot::restart(Body body) {
    cancel();
    if (!m_shared) m_shared = std::make_shared<Shared>(this);
    m_current = ++m_last;
    m_entries.push_back({m_current, std::stop_source()});
    // The task keeps itself alive; its end is observed through m_shared.
    drive(m_shared, m_current, std::move(body), m_entries.back().stop.get_token());
}

void TaskSlot::cancel() {
    stopEntry(std::exchange(m_current, 0));
}

void TaskSlot::cancelAll() {
    m_current = 0;
    // Copies, since a stop callback may touch the list.
    std::vector<Entry> entries = m_entries;
    for (Entry& entry : entries)
        entry.stop.request_stop();
}

void TaskSlot::release() {
    m_current = 0;
}

void TaskSlot::stopEntry(std::uint64_t id) {
    const auto entry = std::ranges::find(m_entries, id, &Entry::id);
    if (entry == m_entries.end()) return;
    // A copy, since a stop callback may touch the list.
    std::stop_source stop = entry->stop;
    stop.request_stop();
}

QCoro::Task<> TaskSlot::drive(std::shared_ptr<Shared> shared, std::uint64_t id, Body body,
                              std::stop_token stop) {
    const Wakeup start;
    start.fire();
    co_await start;
    if (shared->slot) {
        try {
            co_await body(stop);
        } catch (const std::exception& error) {
            qCWarning(supportLog, "Vorq task ended with an error: %s", error.what());
        } catch (...) {
            qCWarning(supportLog, "Vorq task ended with an unknown error");
        }
    }
    body = nullptr;
    if (!shared->slot) co_return;
    std::erase_if(shared->slot->m_entries, [id](const Entry& entry) { return entry.id == id; });
    if (shared->slot->m_current == id) shared->slot->m_current = 0;
}

} // namespace vorq
