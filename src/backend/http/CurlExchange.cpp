#include "backend/http/CurlExchange.h"

#include "backend/http/BackendLog.h"
#include "backend/http/CurlMulti.h"
#include "backend/http/Errors.h"

#include <string_view>
#include <utility>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

// What is held of a body that nobody has read yet.
constexpr qsizetype readAhead = 256 << 10;
constexpr qsizetype longestRead = 64 << 10;
// libcurl keeps every line of a response's headers and trailers, each of bounded length.
constexpr qsizetype mostHeaderLines = 1000;

} // namespace

CurlExchange::CurlExchange(HttpRequest request, Clock& clock, CurlMulti& multi)
    : m_clock(clock), m_multi(&multi), m_timeout(request.timeout), m_request(std::move(request)) {
    m_request.set(CURLOPT_PRIVATE, this);
    m_request.set(CURLOPT_ERRORBUFFER, m_errorText.data());
    m_request.set(CURLOPT_HEADERFUNCTION, &CurlExchange::onHeader);
    m_request.set(CURLOPT_HEADERDATA, this);
    m_request.set(CURLOPT_WRITEFUNCTION, &CurlExchange::onBody);
    m_request.set(CURLOPT_WRITEDATA, this);
    multi.add(*this);
}

CurlExchange::~CurlExchange() {
    abort();
}

void CurlExchange::abort() {
    if (!m_multi) return;
    m_multi->remove(*this);
    leave();
}

void CurlExchange::finish(CURLcode result) {
    m_result = result;
    leave();
}

void CurlExchange::leave() {
    // Clock and multi may go next.
    forgetTimer();
    m_multi = nullptr;
    noteActivity();
}

void CurlExchange::noteActivity() {
    m_active = true;
    if (m_waiting) m_waiting->fire();
}

void CurlExchange::forgetTimer() {
    if (m_timer) m_clock.cancel(*m_timer);
    m_timer.reset();
}

std::size_t CurlExchange::onHeader(char* data, std::size_t, std::size_t size, void* self) {
    auto& exchange = *static_cast<CurlExchange*>(self);
    if (++exchange.m_headerLines > mostHeaderLines) return 0;
    exchange.noteActivity();
    if (exchange.m_status) return size; // behind a body in chunks
    const std::string_view line(data, size);
    if (line != "\r\n" && line != "\n") return size;
    long status = 0;
    LibCurl::get().easyGetinfo(exchange.handle(), CURLINFO_RESPONSE_CODE, &status);
    // Nobody asked for another protocol. Any other interim response has one behind it.
    if (status == 101) return 0;
    if (status >= 200) exchange.m_status = static_cast<int>(status);
    return size;
}

std::size_t CurlExchange::onBody(char* data, std::size_t, std::size_t size, void* self) {
    auto& exchange = *static_cast<CurlExchange*>(self);
    const auto length = static_cast<qsizetype>(size);
    if (!exchange.m_body.isEmpty() && exchange.m_body.size() + length > readAhead) {
        exchange.m_isPaused = true;
        return CURL_WRITEFUNC_PAUSE;
    }
    exchange.m_body.append(data, length);
    exchange.noteActivity();
    return size;
}

QByteArray CurlExchange::takeBody() {
    QByteArray taken;
    if (m_body.size() <= longestRead) {
        taken = std::exchange(m_body, {});
    } else {
        taken = m_body.first(longestRead);
        m_body.remove(0, longestRead);
    }
    if (m_isPaused && m_multi && m_body.size() <= readAhead / 2) {
        m_isPaused = false;
        // Hands over what libcurl holds before it returns.
        if (LibCurl::get().easyPause(handle(), CURLPAUSE_CONT) != CURLE_OK) abort();
    }
    return taken;
}

void CurlExchange::requireRunning() const {
    if (m_multi) return;
    if (!m_result) throw TransferError(u"The transfer was ended."_s);
    // A response without a head is none.
    const CURLcode result = *m_result == CURLE_OK ? CURLE_WEIRD_SERVER_REPLY : *m_result;
    const char* const words =
        m_errorText[0] ? m_errorText.data() : LibCurl::get().easyStrerror(result);
    // What libcurl says is for whoever looks into it; a user could do nothing with it.
    qCDebug(backendLog, "Vorq transfer failed: %s", words);
    throw TransferError(m_status
                            ? u"The connection to Vorq broke off before the reply was complete."_s
                            : u"The connection to Vorq could not be made."_s);
}

QCoro::Task<> CurlExchange::progress(std::shared_ptr<CurlExchange> self, std::stop_token stop) {
    self->requireRunning();
    const Wakeup wakeup;
    self->m_waiting = wakeup;
    self->m_active = false;
    self->m_timer = self->m_clock.after(self->m_timeout, [wakeup] { wakeup.fire(); });
    {
        const std::stop_callback onStop(stop, [exchange = self.get()] { exchange->abort(); });
        co_await wakeup;
    }
    self->forgetTimer();
    self->m_waiting.reset();
    if (stop.stop_requested()) throw OperationCancelled();
    if (!self->m_active) throw TransferError(u"The request timed out."_s);
}

QCoro::Task<int> CurlExchange::head(std::shared_ptr<CurlExchange> self, std::stop_token stop) {
    for (;;) {
        if (const std::optional<int> status = self->m_status) co_return *status;
        co_await progress(self, stop);
    }
}

QCoro::Task<QByteArray> CurlExchange::body(std::shared_ptr<CurlExchange> self,
                                           std::stop_token stop) {
    // Even bytes that are there already come by way of the event loop, which has other work too.
    const Wakeup turn;
    turn.fire();
    co_await turn;
    if (stop.stop_requested()) throw OperationCancelled();
    while (self->m_body.isEmpty() && self->m_result != CURLE_OK)
        co_await progress(self, stop);
    co_return self->takeBody();
}

} // namespace vorq
