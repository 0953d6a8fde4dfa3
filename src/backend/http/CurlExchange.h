#pragma once

#include "backend/http/CurlRequest.h"
#include "support/async/Wakeup.h"

#include <array>
#include <optional>

namespace vorq {

class CurlMulti;

/// One transfer, what it has brought so far, and the waiting for more. Shared by whoever still
/// waits, so it may be dropped at any time. Waits throw TransferError or OperationCancelled.
class CurlExchange {
  public:
    /// Throws TransferError for what cannot be sent.
    CurlExchange(HttpRequest request, Clock& clock, CurlMulti& multi);
    CurlExchange(const CurlExchange&) = delete;
    CurlExchange& operator=(const CurlExchange&) = delete;
    ~CurlExchange();

    /// Waits for the head of the response and gives its status.
    static QCoro::Task<int> head(std::shared_ptr<CurlExchange> self, std::stop_token stop);
    /// Waits for the next bytes of the body; empty at its end.
    static QCoro::Task<QByteArray> body(std::shared_ptr<CurlExchange> self, std::stop_token stop);

    /// Closes the connection at once.
    void abort();

    // For CurlMulti.
    [[nodiscard]] CURL* handle() const { return m_request.handle(); }
    /// Something has happened on the connection.
    void noteActivity();
    /// The transfer has ended.
    void finish(CURLcode result);
    /// The transfer is no longer with the multi. Waits end.
    void leave();

  private:
    static std::size_t onHeader(char* data, std::size_t, std::size_t size, void* self);
    static std::size_t onBody(char* data, std::size_t, std::size_t size, void* self);
    // Waits until something happens on the connection.
    static QCoro::Task<> progress(std::shared_ptr<CurlExchange> self, std::stop_token stop);

    void requireRunning() const;
    [[nodiscard]] QByteArray takeBody();
    void forgetTimer();

    Clock& m_clock;
    CurlMulti* m_multi; // nothing once the transfer has ended
    Clock::Duration m_timeout;
    std::array<char, CURL_ERROR_SIZE> m_errorText{};
    CurlRequest m_request;
    std::optional<int> m_status;
    qsizetype m_headerLines = 0; // of interim responses and behind the body, too
    QByteArray m_body;
    bool m_isPaused = false;
    std::optional<CURLcode> m_result;
    std::optional<Wakeup> m_waiting;
    std::optional<Clock::TimerId> m_timer;
    bool m_active = false;
};

} // namespace vorq
