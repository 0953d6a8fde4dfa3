#include "storage/Database.h"

#include "storage/StatementStore.h"

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

} // namespace

void Statement::GiveBack::operator()(sqlite3_stmt* statement) const {
    store->giveBack(statement);
}

void Statement::check(int code) const {
    if (code != SQLITE_OK) fail(sqlite3_db_handle(m_statement.get()), code);
}

Statement& Statement::bind(int index, std::int64_t value) {
    check(sqlite3_bind_int64(m_statement.get(), index, value));
    return *this;
}

Statement& Statement::bind(int index, std::string_view text) {
    check(sqlite3_bind_text64(m_statement.get(), index, text.data(), text.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
    return *this;
}

Statement& Statement::bindBlob(int index, std::string_view bytes) {
    check(sqlite3_bind_blob64(m_statement.get(), index, bytes.data(), bytes.size(),
                              SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::bindNull(int index) {
    check(sqlite3_bind_null(m_statement.get(), index));
    return *this;
}

bool Statement::step() {
    const int code = sqlite3_step(m_statement.get());
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) fail(sqlite3_db_handle(m_statement.get()), code);
    return false;
}

std::int64_t Statement::integer(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

std::string Statement::text(int column) const {
    return optionalText(column).value_or("");
}

std::optional<std::string> Statement::optionalText(int column) const {
    const unsigned char* text = sqlite3_column_text(m_statement.get(), column);
    if (text == nullptr) return std::nullopt;
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return std::string(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size));
}

/// The statements go before what they belong to.
struct Database::Connection {
    struct Closer {
        void operator()(sqlite3* open) const { sqlite3_close_v2(open); }
    };

    explicit Connection(sqlite3* open) : handle(open), statements(open) {}

    std::unique_ptr<sqlite3, Closer> handle;
    StatementStore statements;
};

Database::Database(const std::filesystem::path& file) {
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

Database::~Database() = default;
Database::Database(Database&&) noexcept = default;
Database& Database::operator=(Database&&) noexcept = default;

sqlite3* Database::handle() const {
    return m_connection->handle.get();
}

Statement Database::prepare(std::string_view sql) {
    sqlite3_stmt* statement = m_connection->statements.lend(sql);
    if (statement == nullptr) fail(handle(), sqlite3_extended_errcode(handle()));
    return {m_connection->statements, statement};
}

void Database::execute(const std::string& sql) {
    check(handle(), sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr));
}

std::int64_t Database::lastInsertId() const {
    return sqlite3_last_insert_rowid(handle());
}

void Database::setPatience(std::chrono::milliseconds patience) {
    check(handle(), sqlite3_busy_timeout(handle(), static_cast<int>(patience.count())));
}

bool Database::isReplaced() const {
    int moved = 0;
    check(handle(), sqlite3_file_control(handle(), "main", SQLITE_FCNTL_HAS_MOVED, &moved));
    return moved != 0;
}

Database Database::another() const {
    return Database(sqlite3_db_filename(handle(), "main"));
}

Transaction::Transaction(Database& database) : m_database(database) {
    m_database.prepare("BEGIN IMMEDIATE").step();
}

Transaction::~Transaction() {
    if (!m_open) return;
    try {
        m_database.prepare("ROLLBACK").step();
    } catch (const DatabaseError&) {
        m_open = false; // SQLite has rolled back by itself.
    }
}

void Transaction::commit() {
    m_database.prepare("COMMIT").step();
    m_open = false;
}

} // namespace vorq::gateway
