#include "storage/sqlite/SharedStateFile.h"

#include <memory>
#include <utility>

namespace vorq::gateway {
namespace {

class Turn final : public SharedDatabase::Lease {
  public:
    Turn(std::unique_lock<std::mutex> lock, Database& database)
        : m_lock(std::move(lock)), m_database(database) {}
    [[nodiscard]] Database& database() override { return m_database; }

  private:
    std::unique_lock<std::mutex> m_lock;
    Database& m_database;
};

} // namespace

SharedStateFile::SharedStateFile(SqliteDatabase database, Reopen reopen)
    : m_reopen(std::move(reopen)), m_writer(std::move(database)), m_reader(m_writer.another()) {
    // SQLite's own waiting would keep the lock from the other threads.
    m_writer.setPatience({});
    m_reader.setPatience({});
}

SharedDatabase::Writing SharedStateFile::write() {
    std::optional<Writing> turn;
    m_toWrite.attempt([&] { turn.emplace(beginWriting()); });
    // It has one, or `attempt` has thrown.
    return *std::move(turn); // NOLINT(bugprone-unchecked-optional-access)
}

std::optional<SharedDatabase::Writing> SharedStateFile::tryWrite() {
    try {
        return beginWriting();
    } catch (const DatabaseError& error) {
        if (!error.isBusy) throw;
        return std::nullopt;
    }
}

SharedDatabase::Writing SharedStateFile::beginWriting() {
    std::unique_lock lock(m_writing);
    if (m_reopen && m_writer.isReplaced()) {
        SqliteDatabase opened = m_reopen();
        SqliteDatabase reader = opened.another();
        opened.setPatience({});
        reader.setPatience({});
        const std::scoped_lock reading(m_reading);
        m_writer = std::move(opened);
        m_reader = std::move(reader);
    }
    return Writing(std::make_unique<Turn>(std::move(lock), m_writer));
}

void SharedStateFile::readWith(const std::function<void(Database&)>& work) {
    m_toRead.attempt([&] {
        if (isReplaced()) static_cast<void>(write());
        const std::scoped_lock lock(m_reading);
        work(m_reader);
    });
}

bool SharedStateFile::isReplaced() {
    const std::scoped_lock lock(m_reading);
    return m_reopen && m_reader.isReplaced();
}

} // namespace vorq::gateway
