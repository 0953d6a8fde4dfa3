#include "support/async/Wakeup.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <utility>

namespace vorq {

struct Wakeup::State {
    std::coroutine_handle<> waiting;
    bool fired = false;
    bool posted = false;

    static void resumeLater(const std::shared_ptr<State>& state) {
        if (state->posted || !state->waiting) return;
        state->posted = true;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [state] { std::exchange(state->waiting, {}).resume(); },
            Qt::QueuedConnection);
    }
};

Wakeup::Wakeup() : m_state(std::make_shared<State>()) {}

void Wakeup::fire() const {
    m_state->fired = true;
    State::resumeLater(m_state);
}

void Wakeup::fireFromAnyThread() const {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [wakeup = *this] { wakeup.fire(); }, Qt::QueuedConnection);
}

bool Wakeup::await_ready() const noexcept {
    return false;
}

void Wakeup::await_suspend(std::coroutine_handle<> waiting) const {
    m_state->waiting = waiting;
    if (m_state->fired) State::resumeLater(m_state);
}

} // namespace vorq
