#include "storage/Database.h"

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

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Statement::Statement(sqlite3* handle, std::string_view sql) : handle_(handle) {
    sqlite3_stmt* raw = nullptr;
    check(handle,
          sqlite3_prepare_v2(handle, sql.data(), static_cast<int>(sql.size()), &raw, nullptr));
    statement_.reset(raw);
}

Statement& Statement::bind(int index, std::int64_t value) {
    check(handle_, sqlite3_bind_int64(statement_.get(), index, value));
    return *this;
}

Statement& Statement::bind(int index, std::string_view text) {
    check(handle_, sqlite3_bind_text64(statement_.get(), index, text.data(), text.size(),
                                       SQLITE_TRANSIENT, SQLITE_UTF8));
    return *this;
}

Statement& Statement::bindBlob(int index, std::string_view bytes) {
    check(handle_, sqlite3_bind_blob64(statement_.get(), index, bytes.data(), bytes.size(),
                                       SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::bindNull(int index) {
    check(handle_, sqlite3_bind_null(statement_.get(), index));
    return *this;
}

bool Statement::step() {
    const int code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) fail(handle_, code);
    return false;
}

std::int64_t Statement::integer(int column) const {
    return sqlite3_column_int64(statement_.get(), column);
}

std::string Statement::text(int column) const {
    return optionalText(column).value_or("");
}

std::optional<std::string> Statement::optionalText(int column) const {
    const unsigned char* text = sqlite3_column_text(statement_.get(), column);
    if (text == nullptr) return std::nullopt;
    const int size = sqlite3_column_bytes(statement_.get(), column);
    return std::string(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size));
}

void Database::Closer::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

Database::Database(const std::filesystem::path& file) {
    const mode_t oldMask = umask(0077);
    sqlite3* raw = nullptr;
    const int code = sqlite3_open_v2(
        file.c_str(), &raw, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_FULLMUTEX,
        nullptr);
    umask(oldMask);
    handle_.reset(raw);
    check(raw, code);
    check(raw, sqlite3_extended_result_codes(raw, 1));
    setPatience(kPatience);
    // Every commit reaches the disk: a rotated refresh token that got lost would sign the user out.
    execute("PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL; PRAGMA foreign_keys=ON;");
}

Statement Database::prepare(std::string_view sql) {
    return {handle_.get(), sql};
}

void Database::execute(const std::string& sql) {
    check(handle_.get(), sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, nullptr));
}

std::int64_t Database::lastInsertId() const {
    return sqlite3_last_insert_rowid(handle_.get());
}

int Database::changes() const {
    return sqlite3_changes(handle_.get());
}

void Database::setPatience(std::chrono::milliseconds patience) {
    check(handle_.get(), sqlite3_busy_timeout(handle_.get(), static_cast<int>(patience.count())));
}

bool Database::isReplaced() const {
    int moved = 0;
    check(handle_.get(),
          sqlite3_file_control(handle_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved));
    return moved != 0;
}

Database Database::another() const {
    return Database(sqlite3_db_filename(handle_.get(), "main"));
}

Transaction::Transaction(Database& database) : database_(database) {
    database_.execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
    if (!open_) return;
    try {
        database_.execute("ROLLBACK");
    } catch (const DatabaseError&) {
        open_ = false; // SQLite has rolled back by itself.
    }
}

void Transaction::commit() {
    database_.execute("COMMIT");
    open_ = false;
}

} // namespace vorq::gateway
