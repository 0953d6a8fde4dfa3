#pragma once

#include "storage/Database.h"

#include <concepts>
#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace vorq::gateway {

/// A database for many threads. Where it is held by others or cannot be reached, the threads wait
/// side by side for a bounded time, and those that come when that has lasted for long already do
/// not wait at all.
class SharedDatabase {
  public:
    SharedDatabase() = default;
    virtual ~SharedDatabase() = default;
    SharedDatabase(const SharedDatabase&) = delete;
    SharedDatabase& operator=(const SharedDatabase&) = delete;

    /// What a thread holds while it works with a database, given back with it.
    class Lease {
      public:
        Lease() = default;
        virtual ~Lease() = default;
        Lease(const Lease&) = delete;
        Lease& operator=(const Lease&) = delete;
        [[nodiscard]] virtual Database& database() = 0;
    };

    /// The turn of a thread to write, in one transaction: rolled back unless committed.
    class Writing {
      public:
        explicit Writing(std::unique_ptr<Lease> lease)
            : m_lease(std::move(lease)),
              m_transaction(std::make_unique<Transaction>(m_lease->database())) {}

        [[nodiscard]] Database& database() { return m_lease->database(); }
        /// See Database::lock.
        void lock(DatabaseLock lock) { database().lock(lock); }
        void commit() { m_transaction->commit(); }

      private:
        std::unique_ptr<Lease> m_lease;
        std::unique_ptr<Transaction> m_transaction;
    };

    /// Throws DatabaseError if the database was held, or away, all the time.
    [[nodiscard]] virtual Writing write() = 0;
    /// The same without waiting for others; nothing if one would have to.
    [[nodiscard]] virtual std::optional<Writing> tryWrite() = 0;

    /// Gives what `work`, called with the database, gives. It may be called again if the database
    /// is held by others or has gone away. Throws as `write` does.
    template<std::invocable<Database&> Work>
    std::invoke_result_t<Work&, Database&> read(Work work) {
        std::optional<std::invoke_result_t<Work&, Database&>> result;
        readWith([&](Database& database) { result = work(database); });
        // The work has run, or `readWith` has thrown.
        return *std::move(result); // NOLINT(bugprone-unchecked-optional-access)
    }

    /// Whether other gateways use it as well, which have to know what this one knows.
    [[nodiscard]] virtual bool servesSeveralGateways() const = 0;

  protected:
    virtual void readWith(const std::function<void(Database&)>& work) = 0;
};

} // namespace vorq::gateway
