#pragma once

#include "writing/SelectionLooker.h"

namespace vorq {

class CaptureGate;
class Screens;
class SelectionReader;

/// Looks by accessibility alone, and only while no capture of the user's needs its thread.
/// Passwords and what reads like a secret are not seen. Main thread only.
class AccessibleSelectionLooker final : public SelectionLooker {
  public:
    static constexpr std::chrono::milliseconds readLimit{250};

    struct Services {
        SelectionReader& reader;
        const CaptureGate& gate;
        const Screens& screens;
    };

    /// The services must outlive this object and what it has under way.
    explicit AccessibleSelectionLooker(const Services& services) : m_services(services) {}

    QCoro::Task<std::optional<SelectionSight>> look(std::optional<ProcessId> source, QPointF seed,
                                                    std::stop_token stop) override;

  private:
    Services m_services;
};

} // namespace vorq
