#include "backend/http/CurlTransport.h"

#include "backend/http/CurlExchange.h"
#include "backend/http/CurlMulti.h"
#include "backend/http/Errors.h"

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

class CurlResponse final : public HttpResponse {
  public:
    CurlResponse(std::shared_ptr<CurlExchange> exchange, int status)
        : m_exchange(std::move(exchange)), m_status(status) {}
    ~CurlResponse() override { m_exchange->abort(); }

    [[nodiscard]] std::optional<int> status() const override { return m_status; }

    QCoro::Task<QByteArray> read(std::stop_token stop) override {
        return CurlExchange::body(m_exchange, std::move(stop));
    }

  private:
    std::shared_ptr<CurlExchange> m_exchange;
    int m_status;
};

} // namespace

CurlTransport::CurlTransport(Clock& clock) : m_clock(clock) {}

CurlTransport::~CurlTransport() = default;

QCoro::Task<std::unique_ptr<HttpResponse>> CurlTransport::open(HttpRequest request,
                                                               std::stop_token stop) {
    if (stop.stop_requested()) throw OperationCancelled();
    const QString scheme = request.url.scheme();
    if ((scheme != "http"_L1 && scheme != "https"_L1) || request.url.host().isEmpty())
        throw TransferError(u"Unsupported URL."_s);
    if (!m_multi) m_multi = std::make_unique<CurlMulti>();
    // From the first wait on, the transport may go.
    const auto exchange = std::make_shared<CurlExchange>(std::move(request), m_clock, *m_multi);
    const int status = co_await CurlExchange::head(exchange, stop);
    co_return std::make_unique<CurlResponse>(exchange, status);
}

} // namespace vorq
