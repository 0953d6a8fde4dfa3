#pragma once

#include "platform/Clock.h"
#include "platform/ProcessId.h"

#include <QObject>

#include <cstdint>
#include <optional>

namespace vorq {

/// Which application is in front in a session that does not say it: Vorq while it has the keyboard,
/// else the one that says of itself that it has. Main thread only.
class WaylandFrontmost final : public QObject {
    Q_OBJECT

  public:
    /// For so long nobody may have the keyboard while it goes from one window to another.
    static constexpr std::chrono::milliseconds handover{100};

    /// The clock must outlive this object.
    WaylandFrontmost(Clock& clock, ProcessId own, QObject* parent = nullptr);
    ~WaylandFrontmost() override;

    /// What is known now: of Vorq, and of all others.
    void setVorqActive(bool isActive);
    void setForeign(std::optional<ProcessId> process);

    /// Nothing while no application says that it is in front.
    [[nodiscard]] std::optional<ProcessId> process() const;

  signals:
    void changed(std::int32_t process);
    /// What is in front does not say it, and that is more than a handover.
    void lost();

  private:
    void look();

    Clock& m_clock;
    ProcessId m_own;
    bool m_isVorqActive = false;
    std::optional<ProcessId> m_foreign;
    std::optional<ProcessId> m_last;
    std::optional<Clock::TimerId> m_handover;
};

} // namespace vorq
