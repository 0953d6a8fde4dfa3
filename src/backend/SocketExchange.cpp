#include "backend/SocketExchange.h"

#include "backend/Errors.h"
#include "backend/HttpRequestText.h"

#include <QNetworkProxyFactory>
#include <QSslSocket>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

// What the socket may hold of a body that nobody has read yet.
constexpr qint64 readBuffer = 128 << 10;
constexpr qint64 longestRead = 64 << 10;

bool isLoopback(const QString& host) {
    if (host == "localhost"_L1 || host.endsWith(".localhost"_L1)) return true;
    const QHostAddress address(host);
    return !address.isNull() && address.isLoopback();
}

QNetworkProxy proxyFor(const QString& host, quint16 port, const QString& scheme) {
    if (isLoopback(host)) return QNetworkProxy::NoProxy;
    const QNetworkProxyQuery query(host, port, scheme);
    return QNetworkProxyFactory::systemProxyForQuery(query).value(0, QNetworkProxy::NoProxy);
}

} // namespace

SocketExchange::SocketExchange(const HttpRequest& request, Clock& clock, QObject& owner)
    : m_clock(clock), m_timeout(request.timeout) {
    const bool encrypted = request.url.scheme() == "https"_L1;
    auto* const secure = encrypted ? new QSslSocket(&owner) : nullptr;
    m_socket = encrypted ? secure : new QTcpSocket(&owner);
    m_socket->setReadBufferSize(readBuffer);
    const auto note = [this] { noteActivity(); };
    connect(m_socket, &QTcpSocket::stateChanged, this, note);
    connect(m_socket, &QTcpSocket::readyRead, this, note);
    connect(m_socket, &QTcpSocket::bytesWritten, this, note);
    connect(m_socket, &QTcpSocket::errorOccurred, this, note);
    connect(m_socket, &QObject::destroyed, this, [this] {
        // The clock may go next.
        forgetTimer();
        noteActivity();
    });
    const QString host = request.url.host();
    const auto port = static_cast<quint16>(request.url.port(encrypted ? 443 : 80));
    m_socket->setProxy(proxyFor(host, port, request.url.scheme()));
    if (encrypted) {
        connect(secure, &QSslSocket::encrypted, this, note);
        secure->connectToHostEncrypted(host, port);
    } else {
        m_socket->connectToHost(host, port);
    }
    // The socket keeps what is written until it is connected.
    m_socket->write(requestHead(request));
    if (request.body) m_socket->write(*request.body);
}

SocketExchange::~SocketExchange() {
    abort();
}

void SocketExchange::abort() {
    forgetTimer();
    if (!m_socket) return;
    QTcpSocket* const socket = m_socket;
    m_socket = nullptr;
    socket->disconnect(this);
    socket->abort();
    socket->deleteLater();
}

void SocketExchange::noteActivity() {
    m_active = true;
    if (m_waiting) m_waiting->fire();
}

void SocketExchange::forgetTimer() {
    if (m_timer) m_clock.cancel(*m_timer);
    m_timer.reset();
}

bool SocketExchange::takeBytes() {
    const QByteArray bytes = m_socket->read(longestRead);
    m_body += m_parser.feed(bytes);
    return !bytes.isEmpty();
}

QCoro::Task<bool> SocketExchange::activity(std::shared_ptr<SocketExchange> self,
                                           std::stop_token stop) {
    const Wakeup wakeup;
    self->m_waiting = wakeup;
    self->m_active = false;
    self->m_timer = self->m_clock.after(self->m_timeout, [wakeup] { wakeup.fire(); });
    {
        const std::stop_callback onStop(stop, [exchange = self.get(), wakeup] {
            exchange->abort();
            wakeup.fire();
        });
        co_await wakeup;
    }
    self->forgetTimer();
    self->m_waiting.reset();
    co_return self->m_active;
}

// Until there are bytes of the body, or the head or the body is at its end.
QCoro::Task<> SocketExchange::progress(std::shared_ptr<SocketExchange> self, std::stop_token stop) {
    for (bool alive = true;; alive = co_await activity(self, stop)) {
        if (stop.stop_requested()) throw OperationCancelled();
        if (!self->m_socket) throw TransferError(u"The transfer was ended."_s);
        if (self->takeBytes()) co_return;
        if (self->m_socket->state() == QTcpSocket::UnconnectedState) {
            const QTcpSocket::SocketError error = self->m_socket->error();
            if (error != QTcpSocket::RemoteHostClosedError &&
                error != QTcpSocket::UnknownSocketError)
                throw TransferError(self->m_socket->errorString());
            self->m_parser.end();
            co_return;
        }
        if (!alive) throw TransferError(u"The request timed out."_s);
    }
}

QCoro::Task<int> SocketExchange::head(std::shared_ptr<SocketExchange> self, std::stop_token stop) {
    while (!self->m_parser.status())
        co_await progress(self, stop);
    co_return *self->m_parser.status();
}

QCoro::Task<QByteArray> SocketExchange::body(std::shared_ptr<SocketExchange> self,
                                             std::stop_token stop) {
    // Even bytes that are there already come by way of the event loop, which has other work too.
    const Wakeup turn;
    turn.fire();
    co_await turn;
    if (stop.stop_requested()) throw OperationCancelled();
    while (self->m_body.isEmpty() && !self->m_parser.isComplete())
        co_await progress(self, stop);
    co_return std::exchange(self->m_body, {});
}

} // namespace vorq
