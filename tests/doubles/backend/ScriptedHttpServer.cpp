#include "doubles/backend/ScriptedHttpServer.h"

#include <QTcpSocket>

#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace vorq {

ScriptedHttpServer::ScriptedHttpServer() {
    connect(&m_server, &QTcpServer::newConnection, this, &ScriptedHttpServer::accept);
    if (!m_server.listen(QHostAddress::LocalHost)) qFatal("No loopback port is free.");
}

ScriptedHttpServer::~ScriptedHttpServer() {
    for (const Connection& connection : m_connections)
        connection.socket->disconnect(this);
}

QString ScriptedHttpServer::url() const {
    return u"http://127.0.0.1:%1"_s.arg(m_server.serverPort());
}

void ScriptedHttpServer::accept() {
    while (QTcpSocket* const socket = m_server.nextPendingConnection()) {
        const std::size_t index = m_connections.size();
        m_connections.push_back({.socket = socket, .received = {}, .answered = false});
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QTcpSocket::readyRead, this, [this, index] { receive(index); });
        receive(index);
    }
}

void ScriptedHttpServer::receive(std::size_t connection) {
    Connection& held = m_connections.at(connection);
    held.received += held.socket->readAll();
    if (held.answered || !hasRequest(connection)) return;
    held.answered = true;
    if (m_handler) m_handler(connection);
}

QByteArray ScriptedHttpServer::received(std::size_t connection) const {
    return m_connections.at(connection).received;
}

bool ScriptedHttpServer::hasRequest(std::size_t connection) const {
    if (connection >= m_connections.size()) return false;
    const QByteArray& received = m_connections[connection].received;
    const qsizetype headEnd = received.indexOf("\r\n\r\n");
    if (headEnd < 0) return false;
    const QByteArray head = received.first(headEnd).toLower();
    static const QByteArray name = "\r\ncontent-length:";
    const qsizetype at = head.indexOf(name);
    if (at < 0) return true;
    const qsizetype valueEnd = head.indexOf('\r', at + name.size());
    const QByteArray value =
        head.sliced(at + name.size(), (valueEnd < 0 ? head.size() : valueEnd) - at - name.size());
    return received.size() >= headEnd + 4 + value.trimmed().toLongLong();
}

bool ScriptedHttpServer::isClosed(std::size_t connection) const {
    return m_connections.at(connection).socket->state() == QAbstractSocket::UnconnectedState;
}

void ScriptedHttpServer::onRequest(std::function<void(std::size_t)> handler) {
    m_handler = std::move(handler);
}

void ScriptedHttpServer::send(std::size_t connection, const QByteArray& bytes) {
    m_connections.at(connection).socket->write(bytes);
    m_connections.at(connection).socket->flush();
}

void ScriptedHttpServer::sendChunk(std::size_t connection, const QByteArray& bytes) {
    send(connection, QByteArray::number(bytes.size(), 16) + "\r\n" + bytes + "\r\n");
}

void ScriptedHttpServer::close(std::size_t connection) {
    m_connections.at(connection).socket->disconnectFromHost();
}

void ScriptedHttpServer::reset(std::size_t connection) {
    QTcpSocket* const socket = m_connections.at(connection).socket;
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(static_cast<int>(socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce,
                 sizeof atOnce);
    socket->abort();
}

QByteArray ScriptedHttpServer::head(int status, const QByteArray& lines) {
    return "HTTP/1.1 " + QByteArray::number(status) + " Status\r\n" + lines + "\r\n";
}

QByteArray ScriptedHttpServer::response(int status, const QByteArray& body,
                                        const QByteArray& lines) {
    return head(status, lines + "Content-Length: " + QByteArray::number(body.size()) + "\r\n") +
           body;
}

} // namespace vorq
