#pragma once

#include "backend/HttpResponseParser.h"
#include "backend/HttpTransport.h"
#include "support/Wakeup.h"

#include <QObject>
#include <QPointer>

#include <memory>

class QTcpSocket;

namespace vorq {

/// One request on a connection of its own, and the waiting for what it brings. Shared by whoever
/// still waits, so it may be dropped at any time. Waits throw TransferError or OperationCancelled.
class SocketExchange final : public QObject {
    Q_OBJECT

  public:
    /// Connects, with a socket that belongs to the owner. When the owner goes, waits fail.
    SocketExchange(const HttpRequest& request, Clock& clock, QObject& owner);
    ~SocketExchange() override;

    /// Waits for the head of the response and gives its status.
    static QCoro::Task<int> head(std::shared_ptr<SocketExchange> self, std::stop_token stop);
    /// Waits for the next bytes of the body; empty at its end.
    static QCoro::Task<QByteArray> body(std::shared_ptr<SocketExchange> self, std::stop_token stop);

    /// Closes the connection at once.
    void abort();

  private:
    // Waits until something happens on the connection. Gives false if nothing did in time.
    static QCoro::Task<bool> activity(std::shared_ptr<SocketExchange> self, std::stop_token stop);
    static QCoro::Task<> progress(std::shared_ptr<SocketExchange> self, std::stop_token stop);
    void noteActivity();
    void forgetTimer();
    /// Takes what the socket has. Gives whether there was anything.
    bool takeBytes();

    QPointer<QTcpSocket> m_socket;
    Clock& m_clock;
    Clock::Duration m_timeout;
    HttpResponseParser m_parser;
    QByteArray m_body;
    std::optional<Wakeup> m_waiting;
    std::optional<Clock::TimerId> m_timer;
    bool m_active = false;
};

} // namespace vorq
