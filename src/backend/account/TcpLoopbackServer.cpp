#include "backend/account/TcpLoopbackServer.h"

#include "backend/account/SignedInPage.h"

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

TcpLoopbackServer::TcpLoopbackServer(Clock& clock, quint16 port)
    : m_clock(clock), m_port(port), m_server(std::make_unique<QTcpServer>()) {
    connect(m_server.get(), &QTcpServer::newConnection, this, &TcpLoopbackServer::accept);
    connect(m_server.get(), &QTcpServer::acceptError, this,
            [this] { complete(std::unexpected(SignInError::failed(m_server->errorString()))); });
}

TcpLoopbackServer::~TcpLoopbackServer() {
    forgetAll();
}

std::expected<void, SignInError>
TcpLoopbackServer::start(std::function<void(const Result&)> onComplete) {
    m_onComplete = std::move(onComplete);
    if (m_server->listen(QHostAddress::LocalHost, m_port)) return {};
    const bool isTaken = m_server->serverError() == QAbstractSocket::AddressInUseError;
    return std::unexpected(SignInError::failed(
        isTaken ? u"Another program uses port %1, which sign-in needs."_s.arg(m_port)
                : u"Could not start local sign-in listener."_s));
}

quint16 TcpLoopbackServer::port() const {
    return m_server->serverPort();
}

QByteArray TcpLoopbackServer::response() {
    return "HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: " +
           QByteArray::number(signedInPage.size()) + "\r\nConnection: close\r\n\r\n" +
           signedInPage.toByteArray();
}

void TcpLoopbackServer::accept() {
    while (QTcpSocket* const socket = m_server->nextPendingConnection()) {
        if (m_connections.size() >= mostConnections) forget(m_connections.front().socket);
        socket->setReadBufferSize(LoopbackRequest::longest);
        const auto hangUp = [this, waiting = QPointer(socket)] {
            if (waiting) forget(waiting);
        };
        m_connections.push_back({.socket = socket, .deadline = m_clock.after(patience, hangUp)});
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::bytesWritten, this, [this, socket] { handleWritten(socket); });
        connect(socket, &QTcpSocket::errorOccurred, this, [this, socket] { handleError(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] { handleClosed(socket); });
        read(socket);
    }
}

TcpLoopbackServer::Connection* TcpLoopbackServer::find(const QTcpSocket* socket) {
    const auto found = std::ranges::find(m_connections, socket, &Connection::socket);
    return found == m_connections.end() ? nullptr : &*found;
}

void TcpLoopbackServer::read(QTcpSocket* socket) {
    Connection* const connection = find(socket);
    if (connection == nullptr || connection->answered || connection->isRefused) return;
    const QByteArray request = socket->peek(LoopbackRequest::longest);
    if (LoopbackRequest::isWhole(request)) {
        if (LoopbackRequest::isForeign(request)) return refuse(*connection, "403 Forbidden");
        return answer(*connection, LoopbackRequest::callbackURL(request));
    }
    if (request.size() >= LoopbackRequest::longest)
        refuse(*connection, "431 Request Header Fields Too Large");
}

void TcpLoopbackServer::answer(Connection& connection, const QUrl& url) {
    connection.answered = url;
    connection.socket->write(response());
    connection.socket->flush();
}

void TcpLoopbackServer::refuse(Connection& connection, const QByteArray& status) {
    connection.isRefused = true;
    connection.socket->write("HTTP/1.1 " + status +
                             "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
    connection.socket->disconnectFromHost();
}

void TcpLoopbackServer::handleWritten(QTcpSocket* socket) {
    const Connection* const connection = find(socket);
    if (connection == nullptr || !connection->answered || socket->bytesToWrite() > 0) return;
    complete(*connection->answered);
}

// Also of a request whose end is missing; one who has said nothing has asked for nothing.
void TcpLoopbackServer::handleClosed(QTcpSocket* socket) {
    const Connection* const connection = find(socket);
    if (connection == nullptr) return;
    const QByteArray request = socket->peek(LoopbackRequest::longest);
    const bool asks =
        !connection->isRefused && !request.isEmpty() && !LoopbackRequest::isForeign(request);
    const std::optional<QUrl> answered = connection->answered;
    forget(socket);
    if (answered)
        complete(*answered);
    else if (asks)
        complete(LoopbackRequest::callbackURL(request));
}

void TcpLoopbackServer::handleError(QTcpSocket* socket) {
    // What has closed the connection is told by its end.
    if (socket->error() == QAbstractSocket::RemoteHostClosedError) return;
    const Connection* const connection = find(socket);
    if (connection == nullptr || connection->isRefused) return;
    const QString description = socket->errorString();
    forget(socket);
    complete(std::unexpected(SignInError::failed(description)));
}

void TcpLoopbackServer::forget(QTcpSocket* socket) {
    const auto found = std::ranges::find(m_connections, socket, &Connection::socket);
    if (found == m_connections.end()) return;
    m_clock.cancel(found->deadline);
    m_connections.erase(found);
    socket->disconnect(this);
    socket->abort();
    socket->deleteLater();
}

void TcpLoopbackServer::forgetAll() {
    while (!m_connections.empty())
        forget(m_connections.back().socket);
}

void TcpLoopbackServer::complete(const Result& result) {
    if (std::exchange(m_isFinished, true)) return;
    m_server->close();
    // It may destroy this object, which is at work.
    QMetaObject::invokeMethod(
        this, [this, result] { std::exchange(m_onComplete, nullptr)(result); },
        Qt::QueuedConnection);
}

} // namespace vorq
