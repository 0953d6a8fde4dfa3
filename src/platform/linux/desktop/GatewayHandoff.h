#pragma once

#include "platform/LocalSignIn.h"

namespace vorq {

class Clock;

/// Asks `vorq-gateway handoff`, the one installed beside this program or found in the path.
class GatewayHandoff final : public LocalSignIn {
  public:
    /// The clock, which must outlive this object, gives the gateway ten seconds.
    explicit GatewayHandoff(Clock& clock) : m_clock(clock) {}

    QCoro::Task<std::expected<QUrl, QString>> handoff(std::stop_token stop) override;

  private:
    Clock& m_clock;
};

} // namespace vorq
