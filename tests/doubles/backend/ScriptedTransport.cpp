#include "doubles/backend/ScriptedTransport.h"

#include "backend/http/Errors.h"
#include "support/async/Wakeup.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <deque>

namespace vorq {

using namespace Qt::StringLiterals;

struct ScriptedExchange::State {
    HttpRequest request;
    bool abandoned = false;
    bool headSent = false;
    bool http = true;
    bool ended = false;
    int status = 0;
    std::optional<QString> failure;
    std::deque<QByteArray> reads;
    std::optional<Wakeup> waiting;
    std::optional<Clock::TimerId> timer;

    void changed() {
        if (waiting) waiting->fire();
    }

    void forgetTimer(Clock& clock) {
        if (timer) clock.cancel(*timer);
        timer.reset();
    }

    // Waits for the test to say something; throws when stopped or out of time.
    static QCoro::Task<> wait(std::shared_ptr<State> self, Clock& clock, std::stop_token stop) {
        const Wakeup wakeup;
        self->waiting = wakeup;
        bool timedOut = false;
        self->timer = clock.after(self->request.timeout, [wakeup, &timedOut] {
            timedOut = true;
            wakeup.fire();
        });
        {
            const std::stop_callback onStop(stop, [state = self.get(), wakeup] {
                state->abandoned = true;
                wakeup.fire();
            });
            co_await wakeup;
        }
        self->forgetTimer(clock);
        self->waiting.reset();
        if (stop.stop_requested()) throw OperationCancelled();
        if (timedOut) throw TransferError(u"The request timed out."_s);
    }
};

namespace {

class ScriptedResponse final : public HttpResponse {
  public:
    ScriptedResponse(std::shared_ptr<ScriptedExchange::State> state, Clock& clock)
        : m_state(std::move(state)), m_clock(clock) {}
    ~ScriptedResponse() override { m_state->abandoned = true; }

    [[nodiscard]] std::optional<int> status() const override {
        return m_state->http ? std::optional(m_state->status) : std::nullopt;
    }

    QCoro::Task<QByteArray> read(std::stop_token stop) override {
        return read(m_state, m_clock, std::move(stop));
    }

  private:
    static QCoro::Task<QByteArray> read(std::shared_ptr<ScriptedExchange::State> state,
                                        Clock& clock, std::stop_token stop) {
        const Wakeup turn;
        turn.fire();
        co_await turn;
        while (true) {
            if (stop.stop_requested()) throw OperationCancelled();
            if (!state->reads.empty()) {
                const QByteArray bytes = state->reads.front();
                state->reads.pop_front();
                co_return bytes;
            }
            if (state->failure) throw TransferError(*state->failure);
            if (state->ended) co_return QByteArray();
            co_await ScriptedExchange::State::wait(state, clock, stop);
        }
    }

    std::shared_ptr<ScriptedExchange::State> m_state;
    Clock& m_clock;
};

} // namespace

const HttpRequest& ScriptedExchange::request() const {
    return m_state->request;
}

QString ScriptedExchange::path() const {
    return m_state->request.url.path();
}

QString ScriptedExchange::url() const {
    return m_state->request.url.toString();
}

QByteArray ScriptedExchange::header(const QByteArray& name) const {
    for (const auto& [key, value] : m_state->request.headers) {
        if (key == name) return value;
    }
    return {};
}

QVariantMap ScriptedExchange::json() const {
    const QByteArray body = m_state->request.body.value_or(QByteArray());
    return QJsonDocument::fromJson(body).object().toVariantMap();
}

bool ScriptedExchange::isAbandoned() const {
    return m_state->abandoned;
}

void ScriptedExchange::respond(int status, const QByteArray& body) const {
    begin(status);
    if (!body.isEmpty()) send(body);
    end();
}

void ScriptedExchange::respondWithoutHttp() const {
    m_state->http = false;
    begin(0);
    end();
}

void ScriptedExchange::begin(int status) const {
    m_state->status = status;
    m_state->headSent = true;
    m_state->changed();
}

void ScriptedExchange::send(const QByteArray& bytes) const {
    m_state->reads.push_back(bytes);
    m_state->changed();
}

void ScriptedExchange::end() const {
    m_state->ended = true;
    m_state->changed();
}

void ScriptedExchange::fail(const QString& description) const {
    m_state->failure = description;
    m_state->changed();
}

ScriptedTransport::~ScriptedTransport() {
    for (const ScriptedExchange& exchange : m_exchanges) {
        exchange.m_state->forgetTimer(m_clock);
        exchange.fail(u"The transfer was ended."_s);
    }
}

QCoro::Task<std::unique_ptr<HttpResponse>> ScriptedTransport::open(HttpRequest request,
                                                                   std::stop_token stop) {
    if (stop.stop_requested()) throw OperationCancelled();
    Clock& clock = m_clock;
    const auto state = std::make_shared<ScriptedExchange::State>();
    state->request = std::move(request);
    m_exchanges.emplace_back(state);
    if (m_handler) m_handler(ScriptedExchange(state));
    // A head that is there already still comes by way of the event loop.
    if (state->headSent || state->failure) {
        const Wakeup turn;
        turn.fire();
        co_await turn;
        if (stop.stop_requested()) throw OperationCancelled();
    }
    while (!state->headSent) {
        if (state->failure) throw TransferError(*state->failure);
        co_await ScriptedExchange::State::wait(state, clock, stop);
    }
    co_return std::make_unique<ScriptedResponse>(state, clock);
}

void ScriptedTransport::onRequest(std::function<void(const ScriptedExchange&)> handler) {
    m_handler = std::move(handler);
}

const ScriptedExchange& ScriptedTransport::at(std::size_t index) const {
    return m_exchanges.at(index);
}

} // namespace vorq
