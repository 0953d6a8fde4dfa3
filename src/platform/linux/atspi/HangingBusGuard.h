#pragma once

class QDBusConnection;

namespace vorq {

/// Lets an application object come up although the accessibility bus hangs, or the service that
/// announces it. Qt asks that twice as it starts and waits for each answer for 25 seconds, and for
/// the bus without a limit; where one of them does not answer within half a second, Qt is kept from
/// asking, and assistive technology does not see this process. Where there is no such service,
/// nothing waits.
///
/// Make it before the application object, and end it after that is made.
class HangingBusGuard {
  public:
    explicit HangingBusGuard(const QDBusConnection& session);
    ~HangingBusGuard();
    HangingBusGuard(const HangingBusGuard&) = delete;
    HangingBusGuard& operator=(const HangingBusGuard&) = delete;

  private:
    bool m_isOn;
};

} // namespace vorq
