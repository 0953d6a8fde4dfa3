// Any bytes as the request by which a browser comes back: they lead to no other place, and no cut
// of them is let in that the whole is not.

#include "backend/account/LoopbackRequest.h"
#include "backend/account/SignInUrl.h"

#include <cstdint>
#include <cstdlib>

using namespace vorq;
using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray request(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QUrl url = LoopbackRequest::callbackURL(request);
    const bool isHere = url.isValid() && url.scheme() == u"http" && url.host() == u"127.0.0.1" &&
                        url.port() == LoopbackRequest::port && url.userInfo().isEmpty() &&
                        url.fragment().isEmpty();
    if (!isHere) std::abort();
    if (!url.path().isEmpty() && !url.path().startsWith(u'/')) std::abort();
    if (QUrl::fromEncoded(url.toEncoded()).path() != url.path()) std::abort();
    for (const QString& name : {u"handoff"_s, u"error"_s, u"refresh_token"_s})
        (void)SignInUrl::queryValue(name, url);
    (void)SignInUrl::isOAuthCallback(url);
    if (LoopbackRequest::isForeign(request)) return 0;
    // What was let in names no other host, whatever follows.
    if (LoopbackRequest::isWhole(request)) {
        const qsizetype lineEnd = request.indexOf('\n') + 1;
        const QByteArray forged =
            request.first(lineEnd) + "Host: evil.example\r\n" + request.sliced(lineEnd);
        if (!LoopbackRequest::isForeign(forged)) std::abort();
    }
    return 0;
}
