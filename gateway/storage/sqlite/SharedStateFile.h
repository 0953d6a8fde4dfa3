#pragma once

#include "storage/Patience.h"
#include "storage/SharedDatabase.h"
#include "storage/sqlite/SqliteDatabase.h"

#include <functional>
#include <mutex>
#include <optional>

namespace vorq::gateway {

/// The state file of one gateway: one thread writes at a time, and reads do not wait for writes.
class SharedStateFile final : public SharedDatabase {
  public:
    /// Opens the file anew, to take the place of one that was removed or replaced.
    using Reopen = std::function<SqliteDatabase()>;

    /// Without `reopen` it stays with the file that it has.
    explicit SharedStateFile(SqliteDatabase database, Reopen reopen = {});

    [[nodiscard]] Writing write() override;
    [[nodiscard]] std::optional<Writing> tryWrite() override;
    [[nodiscard]] bool servesSeveralGateways() const override { return false; }

  private:
    void readWith(const std::function<void(Database&)>& work) override;
    [[nodiscard]] Writing beginWriting();
    [[nodiscard]] bool isReplaced();

    Reopen m_reopen;
    Patience m_toWrite;
    Patience m_toRead;
    std::mutex m_writing;
    std::mutex m_reading;
    SqliteDatabase m_writer;
    SqliteDatabase m_reader;
};

} // namespace vorq::gateway
