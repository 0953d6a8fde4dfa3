#pragma once

#include "platform/linux/atspi/AtSpiFocusOrder.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <vector>

class QDBusServiceWatcher;

namespace vorq {

class AtSpiWindowWatch;

/// Calls that are sent together, and their answers as they come in.
class AtSpiBatch {
  public:
    explicit AtSpiBatch(std::vector<QDBusMessage> calls)
        : m_calls(std::move(calls)), m_replies(m_calls.size()), m_missing(m_calls.size()) {}

    [[nodiscard]] const std::vector<QDBusMessage>& calls() const { return m_calls; }

    /// On the connection's thread. An error is an answer, too.
    void answer(std::size_t index, const QDBusMessage& reply);

    /// Waits for all answers, or for the token; what came by then, else invalid messages.
    [[nodiscard]] std::vector<QDBusMessage> wait(const std::stop_token& stop);

  private:
    std::vector<QDBusMessage> m_calls;
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::vector<QDBusMessage> m_replies;
    std::size_t m_missing;
};

/// What other threads may look at.
class AtSpiShared {
  public:
    std::atomic<bool> isConnected = false;
    std::atomic<bool> isSwitchedOn = false;
    std::atomic<bool> isSought = false;
    std::atomic<int> connections = 0;

    [[nodiscard]] AtSpiFocusOrder focusOrder() const;
    template<typename Change>
    void changeFocusOrder(Change change) {
        const std::scoped_lock lock(m_mutex);
        change(m_focusOrder);
    }

    /// The process with the active window, once windows are followed.
    [[nodiscard]] std::optional<std::int32_t> front() const;
    void setFront(std::optional<std::int32_t> process);

  private:
    mutable std::mutex m_mutex;
    AtSpiFocusOrder m_focusOrder;
    std::optional<std::int32_t> m_front;
};

/// The connection behind AtSpiBus, and the events that come over it. Everything but shared()
/// belongs to the thread that it is moved to.
class AtSpiConnection final : public QObject {
    Q_OBJECT

  public:
    AtSpiConnection(QString sessionBusAddress, std::chrono::milliseconds callLimit);
    ~AtSpiConnection() override;

    [[nodiscard]] AtSpiShared& shared() { return m_shared; }
    [[nodiscard]] const AtSpiShared& shared() const { return m_shared; }

    /// Connects as far as there is something to connect to.
    void seek();
    void send(const std::shared_ptr<AtSpiBatch>& batch);
    void switchOn();
    /// From now on it is known which application has the active window.
    void followWindows();

  signals:
    /// The bus came or went, or toolkits were told to use it or not to.
    void switchChanged();
    /// Another process has the active window, or none; see AtSpiShared::front().
    void frontChanged();

  private slots:
    void announced();
    void statusChanged(const QDBusMessage& message);
    void stateChanged(const QDBusMessage& message);
    void ownerChanged(const QString& name, const QString& from, const QString& to);
    void sessionLost();
    void busLost();

  private:
    bool connectToSession();
    void askForAddress();
    void connectTo(const QString& address);
    void listen(QDBusConnection& bus);
    void registerForEvents(const QDBusConnection& bus);
    void askForStatus();
    void setSwitchedOn(bool isSwitchedOn);
    void disconnectFromBus();
    void watchWindows(const QDBusConnection& bus);
    void setFront(std::optional<std::int32_t> process);

    QString m_sessionAddress;
    int m_callLimit; // milliseconds
    QString m_sessionName;
    QString m_busName;
    QString m_busAddress;
    std::optional<QDBusConnection> m_session;
    std::optional<QDBusConnection> m_bus;
    QDBusServiceWatcher* m_announcement = nullptr;
    bool m_followsWindows = false;
    AtSpiWindowWatch* m_windows = nullptr;
    AtSpiShared m_shared;
};

} // namespace vorq
