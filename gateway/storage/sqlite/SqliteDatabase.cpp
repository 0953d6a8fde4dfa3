#include "storage/sqlite/SqliteDatabase.h"

#include "storage/sqlite/StatementStore.h"

#include <sqlite3.h>
#include <sys/stat.h>

namespace vorq::gateway {
namespace {

constexpr std::chrono::seconds kPatience{5};

std::string_view adviceFor(int code) {
    switch (code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return "Another program keeps the Vorq gateway's state file busy. Try again in a moment.";
    case SQLITE_FULL:
        return "The disk is full, so the Vorq gateway cannot save anything. Free some space and "
               "try "
               "again.";
    case SQLITE_READONLY:
        return "The Vorq gateway may not write its state file.";
    default:
        return {};
    }
}

[[noreturn]] void fail(sqlite3* handle, int code) {
    const int primary = code & 0xFF;
    const std::string message = handle != nullptr ? sqlite3_errmsg(handle) : sqlite3_errstr(code);
    throw DatabaseError(message, primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB,
                        adviceFor(primary), primary == SQLITE_BUSY || primary == SQLITE_LOCKED);
}

void check(sqlite3* handle, int code) {
    if (code != SQLITE_OK) fail(handle, code);
}

/// A statement of the store, which takes it back.
class SqliteCursor final : public Cursor {
  public:
    SqliteCursor(StatementStore& store, sqlite3_stmt* statement)
        : m_store(store), m_statement(statement) {}
    ~SqliteCursor() override { m_store.giveBack(m_statement); }

    void bindInteger(int index, std::int64_t value) override {
        checkStep(sqlite3_bind_int64(m_statement, index, value));
    }
    void bindText(int index, std::string_view text) override {
        checkStep(sqlite3_bind_text64(m_statement, index, text.data(), text.size(),
                                      SQLITE_TRANSIENT, SQLITE_UTF8));
    }
    void bindBlob(int index, std::string_view bytes) override {
        checkStep(
            sqlite3_bind_blob64(m_statement, index, bytes.data(), bytes.size(), SQLITE_TRANSIENT));
    }
    void bindNull(int index) override { checkStep(sqlite3_bind_null(m_statement, index)); }
    bool step() override {
        const int code = sqlite3_step(m_statement);
        if (code == SQLITE_ROW) return true;
        if (code != SQLITE_DONE) fail(sqlite3_db_handle(m_statement), code);
        return false;
    }
    [[nodiscard]] std::int64_t integer(int column) const override {
        return sqlite3_column_int64(m_statement, column);
    }
    [[nodiscard]] std::optional<std::string> optionalText(int column) const override {
        const unsigned char* text = sqlite3_column_text(m_statement, column);
        if (text == nullptr) return std::nullopt;
        const int size = sqlite3_column_bytes(m_statement, column);
        return std::string(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size));
    }

  private:
    void checkStep(int code) const { check(sqlite3_db_handle(m_statement), code); }

    StatementStore& m_store;
    sqlite3_stmt* m_statement;
};

} // namespace

/// The statements go before what they belong to.
struct SqliteDatabase::Connection {
    struct Closer {
        void operator()(sqlite3* open) const { sqlite3_close_v2(open); }
    };

    explicit Connection(sqlite3* open) : handle(open), statements(open) {}

    std::unique_ptr<sqlite3, Closer> handle;
    StatementStore statements;
};

SqliteDatabase::SqliteDatabase(const std::filesystem::path& file) {
    const mode_t oldMask = umask(0077);
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(
        file.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX,
        nullptr);
    umask(oldMask);
    m_connection = std::make_unique<Connection>(raw);
    check(raw, code);
    check(raw, sqlite3_extended_result_codes(raw, 1));
    setPatience(kPatience);
    // Every commit reaches the disk: a rotated refresh token that got lost would sign the user out.
    execute("PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA foreign_keys=ON;");
}

SqliteDatabase::~SqliteDatabase() = default;
SqliteDatabase::SqliteDatabase(SqliteDatabase&&) noexcept = default;
SqliteDatabase& SqliteDatabase::operator=(SqliteDatabase&&) noexcept = default;

sqlite3* SqliteDatabase::handle() const {
    return m_connection->handle.get();
}

Statement SqliteDatabase::prepare(std::string_view sql) {
    sqlite3_stmt* statement = m_connection->statements.lend(sql);
    if (statement == nullptr) fail(handle(), sqlite3_extended_errcode(handle()));
    return Statement(std::make_unique<SqliteCursor>(m_connection->statements, statement));
}

void SqliteDatabase::execute(const std::string& sql) {
    check(handle(), sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr));
}

void SqliteDatabase::begin() {
    prepare("BEGIN IMMEDIATE").step();
}

void SqliteDatabase::commit() {
    prepare("COMMIT").step();
}

void SqliteDatabase::rollback() {
    prepare("ROLLBACK").step();
}

void SqliteDatabase::lock(DatabaseLock /*lock*/) {}

std::int64_t SqliteDatabase::schemaVersion() {
    Statement statement = prepare("PRAGMA user_version");
    statement.step();
    return statement.integer(0);
}

void SqliteDatabase::setSchemaVersion(std::int64_t version) {
    execute("PRAGMA user_version = " + std::to_string(version));
}

void SqliteDatabase::setPatience(std::chrono::milliseconds patience) {
    check(handle(), sqlite3_busy_timeout(handle(), static_cast<int>(patience.count())));
}

bool SqliteDatabase::isReplaced() const {
    int moved = 0;
    check(handle(), sqlite3_file_control(handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved));
    return moved != 0;
}

SqliteDatabase SqliteDatabase::another() const {
    return SqliteDatabase(sqlite3_db_filename(handle(), "main"));
}

} // namespace vorq::gateway
