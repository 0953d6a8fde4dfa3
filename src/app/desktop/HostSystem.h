#pragma once

#include "platform/Clock.h"
#include "platform/DesktopPlatform.h"
#include "platform/ProcessId.h"

#include <QString>

#include <expected>
#include <memory>
#include <optional>

class QDBusConnection;

namespace vorq {

/// Sees to what a system asks while an application object is made, as long as it lives.
class ApplicationBirth {
  public:
    ApplicationBirth() = default;
    ApplicationBirth(const ApplicationBirth&) = delete;
    ApplicationBirth& operator=(const ApplicationBirth&) = delete;
    virtual ~ApplicationBirth() = default;
};

/// The system that the program runs on, as a program meets it that starts: all but the ports is
/// there without an application object. Main thread only.
class HostSystem {
  public:
    HostSystem() = default;
    HostSystem(const HostSystem&) = delete;
    HostSystem& operator=(const HostSystem&) = delete;
    virtual ~HostSystem() = default;

    /// The ports. Needs an application object.
    [[nodiscard]] virtual std::unique_ptr<DesktopPlatform> makePlatform() const = 0;

    /// When this process was started, by the clock of the platform and to a hundredth of a second;
    /// nothing if the system does not say.
    [[nodiscard]] virtual std::optional<Clock::Duration> startOfThisProcess() const = 0;

    /// The application in front; nothing where the program that runs already knows it better.
    [[nodiscard]] virtual std::optional<ProcessId> frontmostProcess() const = 0;

    /// Whether windows can be shown. Qt ends a program that finds no screen by a crash.
    [[nodiscard]] virtual bool hasScreen() const = 0;

    /// A folder of the user, for a lock that keeps a second Vorq from starting.
    [[nodiscard]] virtual QString lockFolder() const = 0;

    /// For the making of an application object with windows.
    [[nodiscard]] virtual std::unique_ptr<ApplicationBirth>
    prepareApplication(const QDBusConnection& bus) const = 0;

    /// Has applications show us their windows, now and in later sessions, and waits until that is
    /// done, for some seconds at most. The user has agreed. The error is a sentence for them. Needs
    /// an application object.
    [[nodiscard]] virtual std::expected<void, QString> enableAccessibility() const = 0;
};

} // namespace vorq
