#pragma once

#include "platform/Clock.h"

#include <QByteArray>
#include <QCoroTask>
#include <QUrl>

#include <memory>
#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

namespace vorq {

struct HttpRequest {
    QUrl url;
    QByteArray method;
    std::vector<std::pair<QByteArray, QByteArray>> headers;
    std::optional<QByteArray> body;
    /// How long the network may be silent while the request waits for it.
    Clock::Duration timeout{};
};

/// A response whose head has arrived. Destroying it ends the transfer.
class HttpResponse {
  public:
    HttpResponse() = default;
    HttpResponse(const HttpResponse&) = delete;
    HttpResponse& operator=(const HttpResponse&) = delete;
    virtual ~HttpResponse() = default;

    /// Nothing for a response that is not HTTP.
    [[nodiscard]] virtual std::optional<int> status() const = 0;

    /// The next bytes of the body as they arrive, empty at its end. Nothing is read ahead of the
    /// caller but a bounded amount. Resumes from the event loop. One read at a time. Throws
    /// TransferError or OperationCancelled.
    virtual QCoro::Task<QByteArray> read(std::stop_token stop) = 0;
};

/// Sends HTTP requests. Redirects are not followed. Main thread only.
class HttpTransport {
  public:
    HttpTransport() = default;
    HttpTransport(const HttpTransport&) = delete;
    HttpTransport& operator=(const HttpTransport&) = delete;
    virtual ~HttpTransport() = default;

    /// Sends the request and waits for the head of its response. Throws TransferError or
    /// OperationCancelled.
    virtual QCoro::Task<std::unique_ptr<HttpResponse>> open(HttpRequest request,
                                                            std::stop_token stop) = 0;
};

} // namespace vorq
