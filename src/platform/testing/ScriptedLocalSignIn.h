#pragma once

#include "platform/LocalSignIn.h"
#include "support/async/Wakeup.h"

#include <optional>

namespace vorq {

/// A sign-in that a test answers by hand.
class ScriptedLocalSignIn final : public LocalSignIn {
  public:
    int asked = 0;

    void answer(const std::expected<QUrl, QString>& outcome) {
        m_outcome = outcome;
        if (m_wakeup) m_wakeup->fire();
    }

    QCoro::Task<std::expected<QUrl, QString>> handoff(std::stop_token stop) override {
        ++asked;
        const Wakeup wakeup;
        m_wakeup = wakeup;
        const std::stop_callback onStop(stop, [wakeup] { wakeup.fire(); });
        co_await wakeup;
        co_return m_outcome;
    }

  private:
    std::optional<Wakeup> m_wakeup;
    std::expected<QUrl, QString> m_outcome = std::unexpected(QString());
};

} // namespace vorq
