#pragma once

#include "storage/Database.h"

#include <chrono>
#include <concepts>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <type_traits>
#include <utility>

namespace vorq::gateway {

/// A database for many threads: one of them writes at a time, and reads do not wait for writes.
///
/// Where another program holds the file, the threads wait side by side, and those that come when it
/// was held for long already do not wait at all.
class SharedDatabase {
  public:
    /// How long another program may hold the file before threads give up.
    static constexpr std::chrono::seconds kPatience{2};

    /// Opens the file anew, to take the place of one that was removed or replaced.
    using Reopen = std::function<Database()>;

    /// Without `reopen` it stays with the file that it has.
    explicit SharedDatabase(Database database, Reopen reopen = {});

    /// The turn of a thread to write, in one transaction: rolled back unless committed.
    class Writing {
      public:
        [[nodiscard]] Database& database() { return m_database; }
        void commit() { m_transaction->commit(); }

      private:
        friend class SharedDatabase;
        Writing(std::unique_lock<std::mutex> lock, Database& database)
            : m_lock(std::move(lock)),
              m_database(database),
              m_transaction(std::make_unique<Transaction>(database)) {}

        std::unique_lock<std::mutex> m_lock;
        Database& m_database;
        std::unique_ptr<Transaction> m_transaction;
    };

    /// Throws DatabaseError if another program held the file all the time.
    [[nodiscard]] Writing write();
    /// The same without waiting for another program; nothing if one holds the file.
    [[nodiscard]] std::optional<Writing> tryWrite();

    /// Gives what `work`, called with the database, gives. It may be called again if another
    /// program holds the file. Throws as `write` does.
    template<std::invocable<Database&> Work>
    std::invoke_result_t<Work&, Database&> read(Work work) {
        std::optional<std::invoke_result_t<Work&, Database&>> result;
        m_toRead.attempt([&] {
            if (isReplaced()) static_cast<void>(write());
            const std::scoped_lock lock(m_reading);
            result = work(m_reader);
        });
        // The work has run, or `attempt` has thrown.
        return *std::move(result); // NOLINT(bugprone-unchecked-optional-access)
    }

  private:
    using Moment = std::chrono::steady_clock::time_point;

    /// The threads that wait for another program, to write or to read.
    class Waiting {
      public:
        /// Runs the work until it finds the file free or patience is over.
        void attempt(const std::function<void()>& work);

      private:
        /// How long the file has been found held, now included.
        [[nodiscard]] std::chrono::steady_clock::duration heldFor();

        std::mutex m_mutex;
        std::optional<Moment> m_heldSince;
        Moment m_lastHeld;
    };

    [[nodiscard]] Writing beginWriting();
    [[nodiscard]] bool isReplaced();

    Reopen m_reopen;
    Waiting m_toWrite;
    Waiting m_toRead;
    std::mutex m_writing;
    std::mutex m_reading;
    Database m_writer;
    Database m_reader;
};

} // namespace vorq::gateway
