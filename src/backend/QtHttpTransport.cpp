#include "backend/QtHttpTransport.h"

#include "backend/Errors.h"
#include "backend/SocketExchange.h"

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

class SocketResponse final : public HttpResponse {
  public:
    SocketResponse(std::shared_ptr<SocketExchange> exchange, int status)
        : m_exchange(std::move(exchange)), m_status(status) {}
    ~SocketResponse() override { m_exchange->abort(); }

    [[nodiscard]] std::optional<int> status() const override { return m_status; }

    QCoro::Task<QByteArray> read(std::stop_token stop) override {
        return SocketExchange::body(m_exchange, std::move(stop));
    }

  private:
    std::shared_ptr<SocketExchange> m_exchange;
    int m_status;
};

} // namespace

QtHttpTransport::QtHttpTransport(Clock& clock) : m_clock(clock) {}

QtHttpTransport::~QtHttpTransport() = default;

QCoro::Task<std::unique_ptr<HttpResponse>> QtHttpTransport::open(HttpRequest request,
                                                                 std::stop_token stop) {
    if (stop.stop_requested()) throw OperationCancelled();
    const QString scheme = request.url.scheme();
    if ((scheme != "http"_L1 && scheme != "https"_L1) || request.url.host().isEmpty())
        throw TransferError(u"Unsupported URL."_s);
    // From the first wait on, the transport may go.
    const auto exchange = std::make_shared<SocketExchange>(request, m_clock, m_sockets);
    const int status = co_await SocketExchange::head(exchange, stop);
    co_return std::make_unique<SocketResponse>(exchange, status);
}

} // namespace vorq
