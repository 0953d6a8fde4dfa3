#pragma once

#include "backend/HttpTransport.h"

#include <QObject>

namespace vorq {

/// HTTP/1.1 on Qt's sockets, a connection for each request.
///
/// QNetworkAccessManager is no help here: it takes a chunked body in as fast as the network brings
/// it, whatever read buffer it is given, and it repeats requests on its own. This takes a body no
/// faster than it is read. A request for which the network does nothing for its time-out fails.
/// Loopback hosts are reached without proxy. Calls that still run when the transport goes fail.
class QtHttpTransport final : public HttpTransport {
  public:
    /// The clock must outlive the transport.
    explicit QtHttpTransport(Clock& clock);
    ~QtHttpTransport() override;

    QCoro::Task<std::unique_ptr<HttpResponse>> open(HttpRequest request,
                                                    std::stop_token stop) override;

  private:
    Clock& m_clock;
    QObject m_sockets; // parent of all sockets
};

} // namespace vorq
