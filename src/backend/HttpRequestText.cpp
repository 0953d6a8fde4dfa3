#include "backend/HttpRequestText.h"

#include "backend/Errors.h"

#include <algorithm>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

// A line break in a value, such as in a token, would begin a header of its own.
bool isWritable(const QByteArray& value) {
    return std::ranges::none_of(
        value, [](char c) { return (c >= 0 && c < 0x20 && c != '\t') || c == 0x7F; });
}

QByteArray hostOf(const QUrl& url) {
    QByteArray host = url.host(QUrl::FullyEncoded).toLatin1();
    if (host.contains(':')) host = '[' + host + ']';
    return url.port() < 0 ? host : host + ':' + QByteArray::number(url.port());
}

QByteArray targetOf(const QUrl& url) {
    QByteArray target = url.path(QUrl::FullyEncoded).toLatin1();
    if (target.isEmpty()) target = "/";
    if (url.hasQuery()) target += '?' + url.query(QUrl::FullyEncoded).toLatin1();
    return target;
}

} // namespace

QByteArray requestHead(const HttpRequest& request) {
    QByteArray head = request.method + ' ' + targetOf(request.url) + " HTTP/1.1\r\n";
    const auto add = [&head](const QByteArray& name, const QByteArray& value) {
        if (!isWritable(value)) throw TransferError(u"The request holds an invalid header."_s);
        head += name + ": " + value + "\r\n";
    };
    add("Host", hostOf(request.url));
    add("User-Agent", "Vorq");
    add("Accept-Encoding", "identity");
    add("Connection", "close");
    for (const auto& [name, value] : request.headers)
        add(name, value);
    const qsizetype length = request.body ? request.body->size() : 0;
    if (request.body || request.method == "POST") add("Content-Length", QByteArray::number(length));
    return head + "\r\n";
}

} // namespace vorq
