#pragma once

#include "shell/notices/Alert.h"

#include <functional>

namespace vorq {

/// The program among the others of the user's session. Main thread only.
class ApplicationHost {
  public:
    ApplicationHost() = default;
    ApplicationHost(const ApplicationHost&) = delete;
    ApplicationHost& operator=(const ApplicationHost&) = delete;
    virtual ~ApplicationHost() = default;

    /// From now on the program lives without a window and without a place in the task bar.
    virtual void becomeAccessory() = 0;

    virtual void installApplicationIcon() = 0;

    /// Whether the user is with Vorq now, and not with another application.
    [[nodiscard]] virtual bool isActive() const = 0;

    /// Whether the user has used the keyboard or a mouse button since the program was started, and
    /// so is at work elsewhere.
    [[nodiscard]] virtual bool isUserBusy() = 0;

    /// Brings the program forward with an alert, and calls back with the index of the button that
    /// the user takes. Does not wait for that. While the same alert is open there is no second.
    virtual void show(const Alert& alert, std::function<void(qsizetype button)> chosen) = 0;

    /// Ends the program in an orderly way.
    virtual void terminate() = 0;

    /// The same, and takes the program off the machine once nothing of it runs any more that could
    /// bring something back.
    virtual void terminateAndDelete() = 0;
};

} // namespace vorq
