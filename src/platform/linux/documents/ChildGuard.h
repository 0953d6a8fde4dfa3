#pragma once

#include <QByteArray>

#include <chrono>

namespace vorq {

/// What a new process does to itself before it becomes another program: it begins a session
/// without a terminal, whose processes are one group, dies with the thread that started it, leaves
/// no core and keeps within its memory and its time of the processor and, if it is to be alone,
/// without a network. What it starts itself does not die with that thread, but keeps within the
/// same limits.
class ChildGuard {
  public:
    struct Limits {
        bool isAlone;
        quint64 memory; ///< bytes of address space
        std::chrono::seconds processorTime;
    };

    explicit ChildGuard(const Limits& limits);

    /// In the new process, where nothing may be allocated. What the system refuses is left.
    void apply() const;

  private:
    void leaveNetwork() const;

    Limits m_limits;
    // Made before, as text cannot be in the new process.
    QByteArray m_userMap;
    QByteArray m_groupMap;
};

} // namespace vorq
