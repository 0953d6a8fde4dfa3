#pragma once

#include <coroutine>
#include <memory>

namespace vorq {

/// A one-shot signal that one coroutine waits for.
///
/// The waiting coroutine is always resumed from the event loop, never inside fire(), so whoever
/// fires is not re-entered. Copies share the same signal. Main thread only, but for what says more.
class Wakeup {
  public:
    Wakeup();

    /// Lets the waiting coroutine go on. Firing again, or before anyone waits, is fine.
    void fire() const;

    /// The same on another thread. Does nothing once the application object is gone.
    void fireFromAnyThread() const;

    [[nodiscard]] bool await_ready() const noexcept;
    void await_suspend(std::coroutine_handle<> waiting) const;
    void await_resume() const noexcept {}

  private:
    struct State;
    std::shared_ptr<State> m_state;
};

} // namespace vorq
