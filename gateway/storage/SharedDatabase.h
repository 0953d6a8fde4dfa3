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
        [[nodiscard]] Database& database() { return database_; }
        void commit() { transaction_->commit(); }

      private:
        friend class SharedDatabase;
        Writing(std::unique_lock<std::mutex> lock, Database& database)
            : lock_(std::move(lock)),
              database_(database),
              transaction_(std::make_unique<Transaction>(database)) {}

        std::unique_lock<std::mutex> lock_;
        Database& database_;
        std::unique_ptr<Transaction> transaction_;
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
        toRead_.attempt([&] {
            if (isReplaced()) static_cast<void>(write());
            const std::scoped_lock lock(reading_);
            result = work(reader_);
        });
        return *std::move(result);
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

        std::mutex mutex_;
        std::optional<Moment> heldSince_;
        Moment lastHeld_;
    };

    [[nodiscard]] Writing beginWriting();
    [[nodiscard]] bool isReplaced();

    Reopen reopen_;
    Waiting toWrite_;
    Waiting toRead_;
    std::mutex writing_;
    std::mutex reading_;
    Database writer_;
    Database reader_;
};

} // namespace vorq::gateway
