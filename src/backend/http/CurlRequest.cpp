#include "backend/http/CurlRequest.h"

#include "backend/http/Errors.h"

#include <algorithm>
#include <arpa/inet.h>
#include <chrono>
#include <new>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

// What is taken from a socket at once.
constexpr long socketRead = 64 << 10;

bool isLoopback(const QString& host) {
    if (host == "localhost"_L1 || host.endsWith(".localhost"_L1)) return true;
    const QByteArray text = host.toLatin1();
    if (in_addr v4{}; ::inet_pton(AF_INET, text.constData(), &v4) == 1)
        return (ntohl(v4.s_addr) >> 24) == 127;
    in6_addr v6{};
    if (::inet_pton(AF_INET6, text.constData(), &v6) != 1) return false;
    return IN6_IS_ADDR_LOOPBACK(&v6) || (IN6_IS_ADDR_V4MAPPED(&v6) && v6.s6_addr[12] == 127);
}

// A line break in a value, such as in a token, would begin a header of its own.
bool isWritable(const QByteArray& text) {
    return std::ranges::none_of(
        text, [](char c) { return (c >= 0 && c < 0x20 && c != '\t') || c == 0x7F; });
}

// libcurl drops a header that is written with a colon and without a value.
QByteArray headerLine(const QByteArray& name, const QByteArray& value) {
    if (!isWritable(name) || !isWritable(value))
        throw TransferError(u"The request holds an invalid header."_s);
    return value.trimmed().isEmpty() ? name + ';' : name + ": " + value;
}

} // namespace

CurlRequest::CurlRequest(HttpRequest request)
    : m_request(std::move(request)), m_easy(LibCurl::get().easyInit()) {
    if (!m_easy) throw std::bad_alloc();
    setRules();
    setRoute();
    setMethod();
    setHeaders();
}

void CurlRequest::check(CURLcode result) {
    if (result != CURLE_OK)
        throw TransferError(QString::fromUtf8(LibCurl::get().easyStrerror(result)) + u'.');
}

void CurlRequest::setRules() {
    set(CURLOPT_NOSIGNAL, 1L);
    // Else a stop would wait for a name that is being looked up.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    set(CURLOPT_HTTP09_ALLOWED, 0L);
    set(CURLOPT_FOLLOWLOCATION, 0L);
    // On a connection that was used before, libcurl would repeat a request.
    set(CURLOPT_FRESH_CONNECT, 1L);
    set(CURLOPT_FORBID_REUSE, 1L);
    set(CURLOPT_SSL_VERIFYPEER, 1L);
    set(CURLOPT_SSL_VERIFYHOST, 2L);
    if (const QByteArray file = qgetenv("SSL_CERT_FILE"); !file.isEmpty())
        set(CURLOPT_CAINFO, file.constData());
    set(CURLOPT_BUFFERSIZE, socketRead);
    set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    set(CURLOPT_USERAGENT, "Vorq");
    // Each of several addresses gets its share of the time-out.
    const auto limit = std::chrono::ceil<std::chrono::milliseconds>(m_request.timeout);
    set(CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(limit.count()));
}

void CurlRequest::setRoute() {
    const QByteArray url =
        m_request.url.toEncoded(QUrl::FullyEncoded | QUrl::RemoveUserInfo | QUrl::RemoveFragment);
    set(CURLOPT_URL, url.constData());
    set(CURLOPT_PATH_AS_IS, 1L);
    if (isLoopback(m_request.url.host())) set(CURLOPT_PROXY, "");
}

void CurlRequest::setMethod() {
    if (m_request.body || m_request.method == "POST") {
        // The body stays where it is, so the size is told as well.
        const QByteArray& body = m_request.body.emplace(m_request.body.value_or(QByteArray()));
        set(CURLOPT_POST, 1L);
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
        set(CURLOPT_POSTFIELDS, body.constData());
    }
    if (!isWritable(m_request.method)) throw TransferError(u"The request has an invalid method."_s);
    set(CURLOPT_CUSTOMREQUEST, m_request.method.constData());
}

void CurlRequest::setHeaders() {
    addHeader("Accept-Encoding: identity");
    addHeader("Connection: close");
    for (const auto& [name, value] : m_request.headers)
        addHeader(headerLine(name, value));
    // What libcurl would add by itself.
    for (const char* name : {"Accept", "Content-Type", "Expect"}) {
        if (!hasHeader(name)) addHeader(QByteArray(name) + ':');
    }
    set(CURLOPT_HTTPHEADER, m_headers.get());
}

void CurlRequest::addHeader(const QByteArray& line) {
    curl_slist* const longer = LibCurl::get().slistAppend(m_headers.get(), line.constData());
    if (!longer) throw std::bad_alloc();
    static_cast<void>(m_headers.release());
    m_headers.reset(longer);
}

bool CurlRequest::hasHeader(QByteArrayView name) const {
    return std::ranges::any_of(m_request.headers, [name](const auto& header) {
        return header.first.compare(name, Qt::CaseInsensitive) == 0;
    });
}

} // namespace vorq
