#pragma once

#include "platform/PortSupport.h"

#include <QCoroTask>
#include <QString>

#include <stop_token>

namespace vorq {

/// What can be said of the user's session as a whole. Main thread only; nothing waits.
class SessionFacts {
  public:
    SessionFacts() = default;
    SessionFacts(const SessionFacts&) = delete;
    SessionFacts& operator=(const SessionFacts&) = delete;
    virtual ~SessionFacts() = default;

    /// What shows its windows, such as "X11"; "" for nothing.
    [[nodiscard]] virtual QString name() const = 0;

    /// Whether the service answers by which programs ask a desktop for its look and its dialogs,
    /// and why not.
    virtual QCoro::Task<PortSupport> portal(std::stop_token stop) = 0;
};

/// No session.
class NoSessionFacts final : public SessionFacts {
  public:
    [[nodiscard]] QString name() const override { return {}; }
    QCoro::Task<PortSupport> portal(std::stop_token) override {
        const PortSupport none = std::unexpected(QStringLiteral("There is no desktop."));
        co_return none;
    }
};

} // namespace vorq
