#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTcpServer>

#include <functional>
#include <memory>
#include <vector>

class QTcpSocket;

namespace vorq {

/// A server on a real loopback socket that says exactly the bytes that a test gives it.
/// Connections count from zero. It lives on the event loop of the test.
class ScriptedHttpServer final : public QObject {
    Q_OBJECT

  public:
    ScriptedHttpServer();
    ~ScriptedHttpServer() override;

    /// "http://127.0.0.1:<port>"
    [[nodiscard]] QString url() const;

    [[nodiscard]] std::size_t connections() const { return m_connections.size(); }
    /// What has arrived on the connection.
    [[nodiscard]] QByteArray received(std::size_t connection) const;
    /// Whether the head and, by its Content-Length, the body have arrived.
    [[nodiscard]] bool hasRequest(std::size_t connection) const;
    /// Whether the other side has closed the connection.
    [[nodiscard]] bool isClosed(std::size_t connection) const;

    /// Called once for each connection when its request is complete.
    void onRequest(std::function<void(std::size_t connection)> handler);

    void send(std::size_t connection, const QByteArray& bytes);
    /// Bytes as one chunk of a chunked body; none end the body.
    void sendChunk(std::size_t connection, const QByteArray& bytes);
    /// Closes the connection after what was sent.
    void close(std::size_t connection);
    /// Drops the connection so that the other side sees a reset.
    void reset(std::size_t connection);

    /// A response head with the lines given between the status line and the blank line.
    [[nodiscard]] static QByteArray head(int status, const QByteArray& lines);
    /// A whole response with its length.
    [[nodiscard]] static QByteArray response(int status, const QByteArray& body,
                                             const QByteArray& lines = {});

  private:
    struct Connection {
        QTcpSocket* socket;
        QByteArray received;
        bool answered = false;
    };

    void accept();
    void receive(std::size_t connection);

    QTcpServer m_server;
    std::vector<Connection> m_connections;
    std::function<void(std::size_t)> m_handler;
};

} // namespace vorq
