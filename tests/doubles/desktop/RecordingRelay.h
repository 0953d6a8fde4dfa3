#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QTcpServer>

#include <memory>
#include <optional>
#include <vector>

namespace vorq::desktop {

/// Stands between the program and its backend: passes all bytes on, and keeps what the program
/// sent. It lives on the event loop of the test, which therefore must turn.
class RecordingRelay final : public QObject {
  public:
    /// The backend listens on this port of this computer.
    explicit RecordingRelay(quint16 backendPort);
    ~RecordingRelay() override;

    /// "http://127.0.0.1:<port>"
    [[nodiscard]] QString url() const;

    /// The bodies of all whole requests to the path, in order for each connection.
    [[nodiscard]] std::vector<QJsonObject> requests(const QByteArray& path) const;

    /// Whether the bytes stand anywhere in what the program sent, as they are or as JSON or a URL
    /// write them.
    [[nodiscard]] bool wasSent(const QByteArray& text) const;

  private:
    struct Connection {
        QByteArray sent;
    };

    void accept();

    quint16 m_backendPort;
    QTcpServer m_server;
    std::vector<std::shared_ptr<Connection>> m_connections;
};

} // namespace vorq::desktop
