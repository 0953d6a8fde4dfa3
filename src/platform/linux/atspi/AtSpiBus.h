#pragma once

#include "platform/linux/atspi/AtSpiFocusOrder.h"

#include <QDBusMessage>
#include <QString>
#include <QThread>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace vorq {

class AtSpiConnection;

/// The bus on which applications show their user interface to assistive technology.
///
/// The connection lives on a thread of its own. It is made when there is a bus, given up when the
/// bus dies, and sought anew at the next use; without it everything answers with nothing. Calls may
/// come from any other thread.
class AtSpiBus {
  public:
    using Messages = std::vector<QDBusMessage>;

    /// `sessionBusAddress` is where the bus is announced, `callLimit` how long a call may take.
    explicit AtSpiBus(const QString& sessionBusAddress,
                      std::chrono::milliseconds callLimit = std::chrono::milliseconds(250));
    AtSpiBus(const AtSpiBus&) = delete;
    AtSpiBus& operator=(const AtSpiBus&) = delete;
    ~AtSpiBus();

    /// Sends all calls at once and waits for their answers, which come back in the same order. A
    /// call that fails, takes too long, or is under way when the token is stopped, is answered by
    /// an invalid message.
    [[nodiscard]] Messages call(const Messages& calls, const std::stop_token& stop);
    [[nodiscard]] QDBusMessage call(const QDBusMessage& one, const std::stop_token& stop);

    /// Whether the bus is there and toolkits are told to use it, as far as is known. Never waits;
    /// if the bus is not there, it is sought.
    [[nodiscard]] bool isOn() const;

    /// Which connection this is, counted from 1. On each, the names of applications are others.
    [[nodiscard]] int connection() const;

    /// Calls back, on the thread of the context, when isOn() may have changed.
    void whenChanged(QObject* context, const std::function<void()>& callback) const;

    /// Tells toolkits to use the bus. Never waits.
    void switchOn();

    /// Who had the focus last, as the events told.
    [[nodiscard]] AtSpiFocusOrder focusOrder() const;

    /// For an application that told nothing of its focus since it is followed: who has it.
    void learnFocus(const AtSpiRef& element);

    /// From now on it is known which other application has the active window. Never waits.
    void followWindows();
    /// The process of that application; nothing while no application says that it has it.
    [[nodiscard]] std::optional<std::int32_t> front() const;
    /// Calls back, on the thread of the context, when front() may have changed.
    void whenFrontChanges(QObject* context, const std::function<void()>& callback) const;

  private:
    void seekConnection() const;

    QThread m_thread;
    AtSpiConnection* m_connection;
};

} // namespace vorq
