#include "backend/http/CurlMulti.h"

#include "backend/http/CurlExchange.h"

#include <QSocketNotifier>

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace vorq {
namespace {

CURLM* newMulti() {
    static const CURLcode ready = LibCurl::get().globalInit(CURL_GLOBAL_DEFAULT);
    CURLM* const multi = ready == CURLE_OK ? LibCurl::get().multiInit() : nullptr;
    if (!multi) throw std::bad_alloc();
    return multi;
}

CurlExchange* exchangeOf(CURL* easy) {
    char* exchange = nullptr;
    LibCurl::get().easyGetinfo(easy, CURLINFO_PRIVATE, &exchange);
    return reinterpret_cast<CurlExchange*>(exchange);
}

} // namespace

CurlMulti::CurlMulti() : m_multi(newMulti()) {
    LibCurl::get().multiSetopt(m_multi.get(), CURLMOPT_SOCKETFUNCTION, &CurlMulti::onSocket);
    LibCurl::get().multiSetopt(m_multi.get(), CURLMOPT_SOCKETDATA, this);
    LibCurl::get().multiSetopt(m_multi.get(), CURLMOPT_TIMERFUNCTION, &CurlMulti::onTimer);
    LibCurl::get().multiSetopt(m_multi.get(), CURLMOPT_TIMERDATA, this);
    m_timer.setSingleShot(true);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer,
                     [this] { drive(CURL_SOCKET_TIMEOUT, 0); });
}

CurlMulti::~CurlMulti() {
    for (CurlExchange* const exchange : std::exchange(m_exchanges, {})) {
        LibCurl::get().multiRemoveHandle(m_multi.get(), exchange->handle());
        exchange->leave();
    }
    // It still calls back.
    m_multi.reset();
}

void CurlMulti::add(CurlExchange& exchange) {
    if (LibCurl::get().multiAddHandle(m_multi.get(), exchange.handle()) != CURLM_OK)
        throw std::bad_alloc();
    m_exchanges.insert(&exchange);
}

void CurlMulti::remove(CurlExchange& exchange) {
    if (m_exchanges.erase(&exchange) > 0)
        LibCurl::get().multiRemoveHandle(m_multi.get(), exchange.handle());
}

int CurlMulti::onSocket(CURL* easy, curl_socket_t socket, int what, void* self, void*) {
    static_cast<CurlMulti*>(self)->watch(socket, what, exchangeOf(easy));
    return 0;
}

int CurlMulti::onTimer(CURLM*, long milliseconds, void* self) {
    QTimer& timer = static_cast<CurlMulti*>(self)->m_timer;
    constexpr long longest = std::numeric_limits<int>::max();
    if (milliseconds < 0)
        timer.stop();
    else
        timer.start(static_cast<int>(std::min(milliseconds, longest)));
    return 0;
}

void CurlMulti::watch(curl_socket_t socket, int what, CurlExchange* exchange) {
    if (what == CURL_POLL_REMOVE) return forget(socket);
    auto found = m_watches.find(socket);
    if (found == m_watches.end()) {
        const Watch fresh{.readable = notifier(socket, CURL_CSELECT_IN, exchange),
                          .writable = notifier(socket, CURL_CSELECT_OUT, exchange)};
        found = m_watches.emplace(socket, fresh).first;
    }
    found->second.readable->setEnabled((what & CURL_POLL_IN) != 0);
    found->second.writable->setEnabled((what & CURL_POLL_OUT) != 0);
}

QSocketNotifier* CurlMulti::notifier(curl_socket_t socket, int direction, CurlExchange* exchange) {
    const auto type = direction == CURL_CSELECT_IN ? QSocketNotifier::Read : QSocketNotifier::Write;
    auto* const created = new QSocketNotifier(type, &m_notifiers);
    created->setSocket(socket);
    QObject::connect(created, &QSocketNotifier::activated, created,
                     [this, socket, direction, exchange] {
                         if (m_exchanges.contains(exchange)) exchange->noteActivity();
                         drive(socket, direction);
                     });
    return created;
}

void CurlMulti::forget(curl_socket_t socket) {
    const auto found = m_watches.find(socket);
    if (found == m_watches.end()) return;
    // One of them may be calling just now.
    for (QSocketNotifier* const gone : {found->second.readable, found->second.writable}) {
        gone->setEnabled(false);
        gone->deleteLater();
    }
    m_watches.erase(found);
}

void CurlMulti::drive(curl_socket_t socket, int events) {
    int running = 0;
    LibCurl::get().multiSocketAction(m_multi.get(), socket, events, &running);
    takeFinished();
}

void CurlMulti::takeFinished() {
    int left = 0;
    while (const CURLMsg* const message = LibCurl::get().multiInfoRead(m_multi.get(), &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const CURLcode result = message->data.result; // the message goes with the handle
        CurlExchange* const exchange = exchangeOf(message->easy_handle);
        remove(*exchange);
        exchange->finish(result);
    }
}

} // namespace vorq
