#include "storage/postgres/PostgresDatabase.h"

#include "storage/postgres/PostgresDialect.h"

#include <libpq-fe.h>

#include <charconv>
#include <vector>

namespace vorq::gateway {
namespace {

constexpr std::size_t kMostPrepared = 64;
/// Apart from the locks of other programs that use the same database.
constexpr std::int64_t kOurLocks = std::int64_t{0x566F7271} << 32;

class PostgresCursor final : public Cursor {
  public:
    PostgresCursor(PostgresClient& client, std::string name)
        : m_client(client), m_name(std::move(name)) {}

    void bindInteger(int index, std::int64_t value) override {
        at(index) = {.bytes = std::to_string(value), .isNull = false, .isBinary = false};
    }
    void bindText(int index, std::string_view text) override {
        at(index) = {.bytes = postgresText(text), .isNull = false, .isBinary = true};
    }
    void bindBlob(int index, std::string_view bytes) override {
        at(index) = {.bytes = std::string(bytes), .isNull = false, .isBinary = true};
    }
    void bindNull(int index) override { at(index) = {}; }
    bool step() override {
        if (!m_result) {
            m_result = m_client.run(m_name, m_values);
        } else {
            ++m_row;
        }
        return m_row < PQntuples(m_result.get());
    }
    [[nodiscard]] std::int64_t integer(int column) const override {
        const std::string digits = optionalText(column).value_or("0");
        std::int64_t value = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), value);
        return value;
    }
    [[nodiscard]] std::optional<std::string> optionalText(int column) const override {
        if (PQgetisnull(m_result.get(), m_row, column) != 0) return std::nullopt;
        return std::string(PQgetvalue(m_result.get(), m_row, column),
                           static_cast<std::size_t>(PQgetlength(m_result.get(), m_row, column)));
    }

  private:
    PostgresValue& at(int index) {
        const auto place = static_cast<std::size_t>(index) - 1;
        if (m_values.size() <= place) m_values.resize(place + 1);
        return m_values[place];
    }

    PostgresClient& m_client;
    std::string m_name;
    std::vector<PostgresValue> m_values;
    PostgresClient::Result m_result;
    int m_row = 0;
};

} // namespace

Statement PostgresDatabase::prepare(std::string_view sql) {
    auto entry = m_prepared.find(sql);
    if (entry == m_prepared.end()) {
        const bool isKept = m_prepared.size() < kMostPrepared;
        const std::string name = isKept ? "s" + std::to_string(m_prepared.size()) : std::string();
        m_client.prepare(name, postgresStatement(sql));
        if (!isKept) return Statement(std::make_unique<PostgresCursor>(m_client, name));
        entry = m_prepared.emplace(sql, name).first;
    }
    return Statement(std::make_unique<PostgresCursor>(m_client, entry->second));
}

void PostgresDatabase::execute(const std::string& sql) {
    m_client.query(sql);
}

void PostgresDatabase::begin() {
    m_client.query("BEGIN");
}

void PostgresDatabase::commit() {
    const PostgresClient::Result result = m_client.query("COMMIT");
    // It says so where it has rolled back, since a statement had failed.
    if (std::string_view(PQcmdStatus(result.get())) != "COMMIT")
        throw DatabaseError("A transaction had failed before its end.", false);
}

void PostgresDatabase::rollback() {
    m_client.query("ROLLBACK");
}

void PostgresDatabase::lock(DatabaseLock lock) {
    prepare("SELECT pg_advisory_xact_lock(?)").bind(1, kOurLocks + lock.key).step();
}

std::string_view PostgresDatabase::skippingLocked() const {
    return " FOR UPDATE SKIP LOCKED";
}

std::int64_t PostgresDatabase::schemaVersion() {
    // Not to_regclass, which may still say within a transaction what it said before a lock.
    Statement table = prepare("SELECT 1 FROM pg_catalog.pg_class WHERE relname = 'schemaversion' "
                              "AND pg_catalog.pg_table_is_visible(oid)");
    if (!table.step()) return 0;
    Statement statement = prepare("SELECT version FROM schemaVersion");
    return statement.step() ? statement.integer(0) : 0;
}

void PostgresDatabase::setSchemaVersion(std::int64_t version) {
    execute("CREATE TABLE IF NOT EXISTS schemaVersion (version BIGINT NOT NULL);"
            "DELETE FROM schemaVersion;"
            "INSERT INTO schemaVersion VALUES (" +
            std::to_string(version) + ")");
}

void PostgresDatabase::changeSchema(const std::string& step) {
    execute(postgresSchema(step));
}

} // namespace vorq::gateway
