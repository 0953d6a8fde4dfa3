#pragma once

#include "platform/PortSupport.h"

#include <QString>

#include <expected>

namespace vorq {

/// Whether the program starts when the user logs in. The errors are sentences for the log.
class LoginItem {
  public:
    LoginItem() = default;
    LoginItem(const LoginItem&) = delete;
    LoginItem& operator=(const LoginItem&) = delete;
    virtual ~LoginItem() = default;

    /// Whether the desktop starts programs at login, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Has the program started at login from now on, unless the user switched that off.
    virtual std::expected<void, QString> registerAtLogin() = 0;

    virtual std::expected<void, QString> unregisterAtLogin() = 0;
};

} // namespace vorq
