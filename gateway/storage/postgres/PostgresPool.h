#pragma once

#include "storage/Patience.h"
#include "storage/SharedDatabase.h"
#include "storage/postgres/PostgresDatabase.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace vorq::gateway {

/// A database of PostgreSQL, which several gateways may use. Connections are made as they are
/// needed, and again when the server was away.
class PostgresPool final : public SharedDatabase {
  public:
    static constexpr std::size_t kMostConnections = 8;

    /// Connects, and brings the tables up to date. Throws std::runtime_error with a sentence for
    /// the user, which never holds the password.
    explicit PostgresPool(std::string address);

    [[nodiscard]] Writing write() override;
    [[nodiscard]] std::optional<Writing> tryWrite() override;
    [[nodiscard]] bool servesSeveralGateways() const override { return true; }

  private:
    using Moment = std::chrono::steady_clock::time_point;
    class Loan;

    void readWith(const std::function<void(Database&)>& work) override;
    [[nodiscard]] std::unique_ptr<Lease> lend();
    [[nodiscard]] std::unique_ptr<PostgresDatabase> connect();
    void giveBack(std::unique_ptr<PostgresDatabase> database);

    std::string m_address;
    Patience m_patience;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<std::unique_ptr<PostgresDatabase>> m_resting;
    std::size_t m_lent = 0;
    /// Where the last attempt to connect failed, one thread tries again after a pause.
    std::optional<DatabaseError> m_outage;
    Moment m_nextAttempt;
    bool m_isAttempting = false;
};

} // namespace vorq::gateway
