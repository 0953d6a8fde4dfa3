#pragma once

#include "platform/PortSupport.h"

#include <QCoroTask>
#include <QString>
#include <QUrl>

#include <expected>
#include <stop_token>

namespace vorq {

/// The account that the user of this computer has at the backend on this computer. Main thread
/// only.
class LocalSignIn {
  public:
    LocalSignIn() = default;
    LocalSignIn(const LocalSignIn&) = delete;
    LocalSignIn& operator=(const LocalSignIn&) = delete;
    virtual ~LocalSignIn() = default;

    /// Whether this computer can have a backend of its own, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Asks for an address of ours that begins a session, once. The error is a sentence for the
    /// user. The object must outlive the wait.
    virtual QCoro::Task<std::expected<QUrl, QString>> handoff(std::stop_token stop) = 0;
};

} // namespace vorq
