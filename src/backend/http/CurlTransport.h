#pragma once

#include "backend/http/HttpTransport.h"

#include <memory>

namespace vorq {

class CurlMulti;

/// HTTP/1.1 by libcurl on the event loop, a connection for each request.
///
/// A body is taken in no faster than it is read, and no request is repeated. A request for which
/// the network does nothing for its time-out fails. Loopback hosts are reached without proxy; for
/// others, the proxy variables of the environment hold. SSL_CERT_FILE names other certificate
/// authorities than the system's. Calls that still run when the transport goes fail.
class CurlTransport final : public HttpTransport {
  public:
    /// The clock must outlive the transport.
    explicit CurlTransport(Clock& clock);
    ~CurlTransport() override;

    QCoro::Task<std::unique_ptr<HttpResponse>> open(HttpRequest request,
                                                    std::stop_token stop) override;

  private:
    Clock& m_clock;
    std::unique_ptr<CurlMulti> m_multi; // null before the first request
};

} // namespace vorq
