#include "storage/postgres/PostgresClient.h"

#include "support/Utf8.h"

#include <libpq-fe.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

namespace vorq::gateway {
namespace {

using std::chrono::milliseconds;
using Steady = std::chrono::steady_clock;

/// Of each host of an address, in seconds, as libpq has it: one that is silent keeps nobody from
/// the next.
constexpr auto kConnectTime = "2";
/// Longer than the server's own limits below, so that it says by itself what is the matter.
constexpr milliseconds kAnswerTime{6000};
constexpr auto kLimits = "SET statement_timeout = 4000; SET lock_timeout = 2000; "
                         "SET idle_in_transaction_session_timeout = 15000";

constexpr std::string_view kAway =
    "The Vorq gateway's database cannot be reached at the moment. Try again in a moment.";
constexpr std::string_view kHeld =
    "The Vorq gateway's database is busy at the moment. Try again in a moment.";
constexpr std::string_view kFull = "The disk of the Vorq gateway's database is full, so nothing "
                                   "can be saved. Try again later.";
constexpr std::string_view kReadOnly =
    "The Vorq gateway may not write to its database at the moment. Try again in a moment.";

struct Meaning {
    std::string_view state; ///< the beginning of an SQLSTATE
    std::string_view advice;
    bool isBusy;
};

constexpr std::array kMeanings = {
    Meaning{"08", kAway, true},        // connection exception
    Meaning{"57P", kAway, true},       // shutting down, starting up, crashed
    Meaning{"53300", kAway, true},     // too many connections
    Meaning{"28", kAway, true},        // may not connect
    Meaning{"3D000", kAway, true},     // the database is not there
    Meaning{"55P03", kHeld, true},     // a lock was not to be had in time
    Meaning{"57014", kHeld, true},     // the statement took too long
    Meaning{"40", kHeld, true},        // deadlock, failed serialization
    Meaning{"53100", kFull, false},    // disk full
    Meaning{"53", kHeld, true},        // other resources
    Meaning{"25006", kReadOnly, true}, // a standby
};

std::string messageOf(const PGconn* connection) {
    return std::string(trimmed(sanitized(PQerrorMessage(connection))));
}

} // namespace

void PostgresClient::Clear::operator()(pg_result* result) const {
    PQclear(result);
}

void PostgresClient::Finish::operator()(pg_conn* connection) const {
    PQfinish(connection);
}

PostgresClient::PostgresClient(const std::string& address) {
    constexpr std::array names = {"fallback_application_name", "client_encoding",
                                  "keepalives_idle",           "tcp_user_timeout",
                                  "target_session_attrs",      "dbname",
                                  "connect_timeout",           static_cast<const char*>(nullptr)};
    const std::array values = {
        "vorq-gateway", "UTF8",          "30",         "10000",
        "read-write",   address.c_str(), kConnectTime, static_cast<const char*>(nullptr)};
    m_connection.reset(PQconnectdbParams(names.data(), values.data(), 1));
    if (!m_connection) throw std::bad_alloc();
    if (PQstatus(m_connection.get()) != CONNECTION_OK) lose(messageOf(m_connection.get()));
    PQsetnonblocking(m_connection.get(), 1);
    PQsetNoticeProcessor(m_connection.get(), [](void*, const char*) {}, nullptr);
    query(kLimits);
}

PostgresClient::~PostgresClient() = default;

PostgresClient::Result PostgresClient::query(const std::string& sql) {
    send(PQsendQuery(m_connection.get(), sql.c_str()));
    return receive();
}

void PostgresClient::prepare(const std::string& name, const std::string& sql) {
    send(PQsendPrepare(m_connection.get(), name.c_str(), sql.c_str(), 0, nullptr));
    static_cast<void>(receive());
}

PostgresClient::Result PostgresClient::run(const std::string& name,
                                           std::span<const PostgresValue> values) {
    std::vector<const char*> bytes;
    std::vector<int> lengths;
    std::vector<int> formats;
    for (const PostgresValue& value : values) {
        bytes.push_back(value.isNull ? nullptr : value.bytes.c_str());
        lengths.push_back(static_cast<int>(value.bytes.size()));
        formats.push_back(value.isBinary ? 1 : 0);
    }
    send(PQsendQueryPrepared(m_connection.get(), name.c_str(), static_cast<int>(values.size()),
                             bytes.data(), lengths.data(), formats.data(), 0));
    return receive();
}

void PostgresClient::send(int isSent) {
    if (isSent == 0) lose(messageOf(m_connection.get()));
}

PostgresClient::Result PostgresClient::receive() {
    const Moment deadline = Steady::now() + kAnswerTime;
    flush(deadline);
    Result last;
    Result failed;
    while (true) {
        while (PQisBusy(m_connection.get()) != 0) {
            await(false, deadline);
            if (PQconsumeInput(m_connection.get()) == 0) lose(messageOf(m_connection.get()));
        }
        Result next(PQgetResult(m_connection.get()));
        if (!next) break;
        const ExecStatusType status = PQresultStatus(next.get());
        const bool isGood = status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
        (isGood ? last : failed) = std::move(next);
    }
    if (failed) fail(failed.get());
    if (!last) lose("The server gave no answer.");
    return last;
}

void PostgresClient::flush(Moment deadline) {
    for (int left = PQflush(m_connection.get()); left != 0; left = PQflush(m_connection.get())) {
        if (left < 0) lose(messageOf(m_connection.get()));
        await(true, deadline);
        if (PQconsumeInput(m_connection.get()) == 0) lose(messageOf(m_connection.get()));
    }
}

void PostgresClient::await(bool toWrite, Moment deadline) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - Steady::now());
    const short events = toWrite ? POLLIN | POLLOUT : POLLIN;
    pollfd wait{.fd = PQsocket(m_connection.get()), .events = events, .revents = 0};
    const auto most = static_cast<int>(std::max<milliseconds::rep>(0, left.count()));
    if (wait.fd < 0) lose(messageOf(m_connection.get()));
    const int ready = poll(&wait, 1, most);
    if (ready == 0 && Steady::now() >= deadline) lose("The server does not answer.");
}

void PostgresClient::fail(const pg_result* result) {
    if (PQstatus(m_connection.get()) == CONNECTION_BAD) lose(messageOf(m_connection.get()));
    const char* field = PQresultErrorField(result, PG_DIAG_SQLSTATE);
    const std::string_view state = field == nullptr ? "" : field;
    const std::string message(trimmed(sanitized(PQresultErrorMessage(result))));
    const auto meaning = std::ranges::find_if(
        kMeanings, [&](const Meaning& each) { return state.starts_with(each.state); });
    if (meaning == kMeanings.end()) throw DatabaseError(message, false);
    // Where it goes away, or was demoted, the next connection is to another server or another life.
    m_isLost = m_isLost || meaning->advice == kAway || meaning->advice == kReadOnly;
    throw DatabaseError(message, false, meaning->advice, meaning->isBusy);
}

void PostgresClient::lose(const std::string& why) {
    m_isLost = true;
    throw DatabaseError(why, false, kAway, true);
}

bool PostgresClient::isBroken() const {
    return m_isLost || PQstatus(m_connection.get()) == CONNECTION_BAD;
}

bool PostgresClient::isAtRest() const {
    return PQtransactionStatus(m_connection.get()) == PQTRANS_IDLE;
}

void checkPostgresAddress(const std::string& address) {
    const bool hasScheme =
        address.starts_with("postgresql://") || address.starts_with("postgres://");
    char* message = nullptr;
    PQconninfoOption* options = hasScheme ? PQconninfoParse(address.c_str(), &message) : nullptr;
    // It may quote the password.
    PQfreemem(message);
    if (options == nullptr) {
        throw std::runtime_error("The database's address is not one of PostgreSQL, such as "
                                 "postgresql://user@host/name.");
    }
    PQconninfoFree(options);
}

} // namespace vorq::gateway
