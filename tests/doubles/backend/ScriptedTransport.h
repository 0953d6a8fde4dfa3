#pragma once

#include "backend/http/HttpTransport.h"

#include <QByteArray>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <vector>

namespace vorq {

/// One request that a test answers by hand. Copies are the same exchange.
class ScriptedExchange {
  public:
    struct State;

    explicit ScriptedExchange(std::shared_ptr<State> state) : m_state(std::move(state)) {}

    [[nodiscard]] const HttpRequest& request() const;
    [[nodiscard]] QString path() const;
    [[nodiscard]] QString url() const;
    /// Null if the request has no such header.
    [[nodiscard]] QByteArray header(const QByteArray& name) const;
    /// The body as a JSON object; empty if it is none.
    [[nodiscard]] QVariantMap json() const;

    /// Whether the asking side has stopped the request or let go of the response.
    [[nodiscard]] bool isAbandoned() const;

    /// The whole response.
    void respond(int status, const QByteArray& body) const;
    /// A response that is not HTTP.
    void respondWithoutHttp() const;
    /// A response piece by piece: its head, then one network read a send(), then its end.
    void begin(int status = 200) const;
    void send(const QByteArray& bytes) const;
    void end() const;
    /// A failure of the transfer: before the head, or after what was sent so far.
    void fail(const QString& description) const;

  private:
    friend class ScriptedTransport;

    std::shared_ptr<State> m_state;
};

/// A network on which nothing happens but what the test says. Time-outs run on the clock given,
/// which must outlive it. Calls that are still open when it goes fail.
class ScriptedTransport final : public HttpTransport {
  public:
    explicit ScriptedTransport(Clock& clock) : m_clock(clock) {}
    ~ScriptedTransport() override;

    QCoro::Task<std::unique_ptr<HttpResponse>> open(HttpRequest request,
                                                    std::stop_token stop) override;

    /// Called with each request as it comes, for tests that answer all alike.
    void onRequest(std::function<void(const ScriptedExchange&)> handler);

    [[nodiscard]] std::size_t count() const { return m_exchanges.size(); }
    [[nodiscard]] const ScriptedExchange& at(std::size_t index) const;
    [[nodiscard]] const ScriptedExchange& last() const { return m_exchanges.back(); }

  private:
    Clock& m_clock;
    std::function<void(const ScriptedExchange&)> m_handler;
    std::vector<ScriptedExchange> m_exchanges;
};

} // namespace vorq
