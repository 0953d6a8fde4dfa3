#pragma once

#include "platform/PortSupport.h"

#include <QString>

#include <expected>

namespace vorq {

/// The backend on this computer, and whether it starts when the user logs in. The errors are
/// sentences for the user.
class BackendAtLogin {
  public:
    using Outcome = std::expected<void, QString>;

    BackendAtLogin() = default;
    BackendAtLogin(const BackendAtLogin&) = delete;
    BackendAtLogin& operator=(const BackendAtLogin&) = delete;
    virtual ~BackendAtLogin() = default;

    /// Whether there is such a backend to start; else why not.
    [[nodiscard]] virtual PortSupport supported() const = 0;

    [[nodiscard]] virtual bool isOn() const = 0;

    // These block for some seconds at most, and may be called on any thread, one at a time.

    /// Starts it now as well, unless something answers already.
    virtual Outcome switchOn() = 0;

    /// What runs goes on until the user logs out.
    virtual Outcome switchOff() = 0;

    /// Switches it off and ends what it started.
    virtual Outcome remove() = 0;
};

} // namespace vorq
