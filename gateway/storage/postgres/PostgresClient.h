#pragma once

#include "storage/Database.h"

#include <chrono>
#include <memory>
#include <span>
#include <string>
#include <vector>

struct pg_conn;
struct pg_result;

namespace vorq::gateway {

/// A value for a statement.
struct PostgresValue {
    std::string bytes = {};
    bool isNull = true;
    /// Sent as bytes rather than as digits.
    bool isBinary = false;
};

/// One connection to a PostgreSQL server. No operation takes longer than some seconds, whatever
/// becomes of the server and of the network. Not thread-safe. What fails throws DatabaseError.
class PostgresClient {
  public:
    struct Clear {
        void operator()(pg_result* result) const;
    };
    using Result = std::unique_ptr<pg_result, Clear>;

    /// Connects. `address` is a URL as libpq knows it.
    explicit PostgresClient(const std::string& address);
    ~PostgresClient();
    PostgresClient(const PostgresClient&) = delete;
    PostgresClient& operator=(const PostgresClient&) = delete;

    /// Any number of statements without values; gives the result of the last one.
    Result query(const std::string& sql);
    void prepare(const std::string& name, const std::string& sql);
    [[nodiscard]] Result run(const std::string& name, std::span<const PostgresValue> values);

    /// Whether it is of no more use.
    [[nodiscard]] bool isBroken() const;
    /// Whether a transaction is open, or something is still under way.
    [[nodiscard]] bool isAtRest() const;

  private:
    using Moment = std::chrono::steady_clock::time_point;

    struct Finish {
        void operator()(pg_conn* connection) const;
    };

    void send(int isSent);
    [[nodiscard]] Result receive();
    void flush(Moment deadline);
    void await(bool toWrite, Moment deadline);
    [[noreturn]] void fail(const pg_result* result);
    [[noreturn]] void lose(const std::string& why);

    std::unique_ptr<pg_conn, Finish> m_connection;
    bool m_isLost = false;
};

/// Throws std::runtime_error with a sentence, which quotes nothing of it, unless `address` is one.
void checkPostgresAddress(const std::string& address);

} // namespace vorq::gateway
