#pragma once

#include "backend/account/LoopbackRequest.h"
#include "backend/account/LoopbackServer.h"
#include "platform/Clock.h"

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

class QTcpServer;
class QTcpSocket;

namespace vorq {

/// The listener on 127.0.0.1. The first request wins, whatever its path, and is answered with the
/// page that ends a sign-in; what a page sends behind the user's back is refused and changes
/// nothing. Who says nothing, or no whole request within five seconds, is hung up on. Nothing
/// blocks.
class TcpLoopbackServer final : public QObject, public LoopbackServer {
    Q_OBJECT

  public:
    /// How long a connection may take to ask.
    static constexpr std::chrono::seconds patience{5};
    static constexpr std::size_t mostConnections = 32;

    /// The clock must outlive the server. Tests listen on a port of their own, 0 for any.
    explicit TcpLoopbackServer(Clock& clock, quint16 port = LoopbackRequest::port);
    ~TcpLoopbackServer() override;

    [[nodiscard]] std::expected<void, SignInError>
    start(std::function<void(const Result&)> onComplete) override;

    /// The port that it listens on; 0 if it does not.
    [[nodiscard]] quint16 port() const;

    /// All that a browser gets in return.
    [[nodiscard]] static QByteArray response();

  private:
    struct Connection {
        QTcpSocket* socket = nullptr;
        Clock::TimerId deadline = 0;
        std::optional<QUrl> answered{};
        bool isRefused = false;
    };

    void accept();
    void read(QTcpSocket* socket);
    void answer(Connection& connection, const QUrl& url);
    void refuse(Connection& connection, const QByteArray& status);
    void handleWritten(QTcpSocket* socket);
    void handleClosed(QTcpSocket* socket);
    void handleError(QTcpSocket* socket);
    void forget(QTcpSocket* socket);
    void forgetAll();
    void complete(const Result& result);
    [[nodiscard]] Connection* find(const QTcpSocket* socket);

    Clock& m_clock;
    quint16 m_port;
    std::function<void(const Result&)> m_onComplete;
    bool m_isFinished = false;
    std::unique_ptr<QTcpServer> m_server;
    std::vector<Connection> m_connections; // the oldest first
};

} // namespace vorq
