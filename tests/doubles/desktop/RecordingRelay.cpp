#include "doubles/desktop/RecordingRelay.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpSocket>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

// The length of the body by the lines of a request.
qsizetype bodyLength(const QByteArray& head) {
    for (const QByteArray& line : head.toLower().split('\n'))
        if (line.startsWith("content-length:"))
            return line.sliced(line.indexOf(':') + 1).trimmed().toLongLong();
    return 0;
}

void passOn(QTcpSocket* from, QTcpSocket* to, QByteArray* kept) {
    const QByteArray bytes = from->readAll();
    if (kept != nullptr) *kept += bytes;
    to->write(bytes);
}

} // namespace

RecordingRelay::RecordingRelay(quint16 backendPort) : m_backendPort(backendPort) {
    connect(&m_server, &QTcpServer::newConnection, this, [this] { accept(); });
    if (!m_server.listen(QHostAddress::LocalHost)) qFatal("No loopback port is free.");
}

RecordingRelay::~RecordingRelay() = default;

QString RecordingRelay::url() const {
    return u"http://127.0.0.1:%1"_s.arg(m_server.serverPort());
}

void RecordingRelay::accept() {
    while (QTcpSocket* const program = m_server.nextPendingConnection()) {
        auto connection = std::make_shared<Connection>();
        m_connections.push_back(connection);
        auto* const backend = new QTcpSocket(program);
        const auto upward = [=] { passOn(program, backend, &connection->sent); };
        connect(backend, &QTcpSocket::connected, program, [=] {
            connect(program, &QTcpSocket::readyRead, backend, upward);
            upward();
        });
        connect(backend, &QTcpSocket::readyRead, program,
                [=] { passOn(backend, program, nullptr); });
        connect(backend, &QTcpSocket::disconnected, program,
                [program] { program->disconnectFromHost(); });
        connect(backend, &QTcpSocket::errorOccurred, program,
                [program] { program->disconnectFromHost(); });
        connect(program, &QTcpSocket::disconnected, backend,
                [backend] { backend->disconnectFromHost(); });
        backend->connectToHost(QHostAddress::LocalHost, m_backendPort);
    }
}

std::vector<QJsonObject> RecordingRelay::requests(const QByteArray& path) const {
    std::vector<QJsonObject> found;
    for (const auto& connection : m_connections) {
        QByteArray rest = connection->sent;
        for (qsizetype end; (end = rest.indexOf("\r\n\r\n")) >= 0;) {
            const QByteArray head = rest.first(end);
            const qsizetype length = bodyLength(head);
            if (rest.size() < end + 4 + length) break;
            if (head.split(' ').value(1) == path)
                found.push_back(QJsonDocument::fromJson(rest.sliced(end + 4, length)).object());
            rest.remove(0, end + 4 + length);
        }
    }
    return found;
}

bool RecordingRelay::wasSent(const QByteArray& text) const {
    QJsonArray written{QString::fromUtf8(text)};
    const QByteArray json = QJsonDocument(written).toJson(QJsonDocument::Compact);
    const std::array forms{text, json.sliced(2, json.size() - 4), text.toPercentEncoding(),
                           text.toBase64()};
    return std::ranges::any_of(m_connections, [&](const auto& connection) {
        return std::ranges::any_of(
            forms, [&](const QByteArray& form) { return connection->sent.contains(form); });
    });
}

} // namespace vorq::desktop
