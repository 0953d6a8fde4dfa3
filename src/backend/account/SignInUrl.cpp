#include "backend/account/SignInUrl.h"

using namespace Qt::StringLiterals;

namespace vorq::SignInUrl {
namespace {

QString decoded(QStringView text) {
    return QUrl::fromPercentEncoding(text.toUtf8());
}

std::optional<QString> itemOf(const QString& query, const QString& name) {
    for (const QStringView item : QStringView(query).split(u'&')) {
        const qsizetype sign = item.indexOf(u'=');
        if (sign >= 0 && decoded(item.first(sign)) == name) return decoded(item.sliced(sign + 1));
    }
    return std::nullopt;
}

bool isAtOrBelow(const QString& path, QStringView place) {
    return path == place || (path.startsWith(place) && path[place.size()] == u'/');
}

} // namespace

std::optional<QString> queryValue(const QString& name, const QUrl& url) {
    if (auto value = itemOf(url.query(QUrl::FullyEncoded), name)) return value;
    return itemOf(url.fragment(QUrl::FullyEncoded), name);
}

bool isOAuthCallback(const QUrl& url) {
    const QString scheme = url.scheme().toLower();
    const QString host = url.host().toLower();
    const QString path = url.path();
    if (scheme == u"vorq") return host == u"auth" && isAtOrBelow(path, u"/callback");
    const bool isLocal = host == u"127.0.0.1" || host == u"localhost";
    if (!isLocal || (scheme != u"http" && scheme != u"https")) return false;
    if (path.startsWith(u"/auth/mac-callback.html")) return true;
    return scheme == u"http" && isAtOrBelow(path, u"/callback");
}

std::optional<QString> handoffCode(const QUrl& url) {
    if (!url.isValid() || url.scheme() != u"vorq") return std::nullopt;
    std::optional<QString> code = queryValue(u"handoff"_s, url);
    return code && !code->isEmpty() ? code : std::nullopt;
}

} // namespace vorq::SignInUrl
