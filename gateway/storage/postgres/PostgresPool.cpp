#include "storage/postgres/PostgresPool.h"

#include "storage/Schema.h"
#include "support/Filled.h"

#include <stdexcept>
#include <utility>

namespace vorq::gateway {
namespace {

using Steady = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kPauseBetweenAttempts{200};

} // namespace

class PostgresPool::Loan final : public Lease {
  public:
    Loan(PostgresPool& pool, std::unique_ptr<PostgresDatabase> database)
        : m_pool(pool), m_database(std::move(database)) {}
    ~Loan() override { m_pool.giveBack(std::move(m_database)); }
    Loan(const Loan&) = delete;
    Loan& operator=(const Loan&) = delete;
    [[nodiscard]] Database& database() override { return *m_database; }

  private:
    PostgresPool& m_pool;
    std::unique_ptr<PostgresDatabase> m_database;
};

PostgresPool::PostgresPool(std::string address) : m_address(std::move(address)) {
    checkPostgresAddress(m_address);
    try {
        migrate(lend()->database());
    } catch (const DatabaseError& error) {
        throw std::runtime_error(filled("Could not open the database: {}.", error.what()));
    }
}

SharedDatabase::Writing PostgresPool::write() {
    std::optional<Writing> turn;
    m_patience.attempt([&] { turn.emplace(lend()); });
    // It has one, or `attempt` has thrown.
    return *std::move(turn); // NOLINT(bugprone-unchecked-optional-access)
}

std::optional<SharedDatabase::Writing> PostgresPool::tryWrite() {
    try {
        return Writing(lend());
    } catch (const DatabaseError& error) {
        if (!error.isBusy) throw;
        return std::nullopt;
    }
}

void PostgresPool::readWith(const std::function<void(Database&)>& work) {
    m_patience.attempt([&] { work(lend()->database()); });
}

std::unique_ptr<SharedDatabase::Lease> PostgresPool::lend() {
    std::unique_lock lock(m_mutex);
    const auto isFree = [this] { return !m_resting.empty() || m_lent < kMostConnections; };
    if (!m_changed.wait_for(lock, Patience::kLimit, isFree)) {
        throw DatabaseError("All connections to the database are in use.", false,
                            "The Vorq gateway is busy. Try again in a moment.", true);
    }
    std::unique_ptr<PostgresDatabase> database;
    if (!m_resting.empty()) {
        database = std::move(m_resting.back());
        m_resting.pop_back();
    } else {
        const bool mustWait = m_isAttempting || Steady::now() < m_nextAttempt;
        if (m_outage && mustWait) throw DatabaseError(*m_outage);
        m_isAttempting = true;
    }
    ++m_lent;
    lock.unlock();
    if (!database) database = connect();
    return std::make_unique<Loan>(*this, std::move(database));
}

std::unique_ptr<PostgresDatabase> PostgresPool::connect() {
    try {
        auto database = std::make_unique<PostgresDatabase>(m_address);
        const std::scoped_lock lock(m_mutex);
        m_isAttempting = false;
        m_outage.reset();
        return database;
    } catch (const std::exception& error) {
        const auto* known = dynamic_cast<const DatabaseError*>(&error);
        const std::scoped_lock lock(m_mutex);
        m_isAttempting = false;
        if (known != nullptr) m_outage = *known;
        m_nextAttempt = Steady::now() + kPauseBetweenAttempts;
        --m_lent;
        m_changed.notify_one();
        throw;
    }
}

void PostgresPool::giveBack(std::unique_ptr<PostgresDatabase> database) {
    const bool isReusable = database->isReusable();
    std::vector<std::unique_ptr<PostgresDatabase>> stale;
    {
        const std::scoped_lock lock(m_mutex);
        --m_lent;
        if (isReusable) {
            m_resting.push_back(std::move(database));
        } else {
            // The others were made for the same server, and it has gone.
            stale = std::exchange(m_resting, {});
        }
    }
    m_changed.notify_one();
}

} // namespace vorq::gateway
