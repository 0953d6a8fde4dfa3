#include "storage/sqlite/StateFile.h"

#include "storage/Schema.h"
#include "support/Filled.h"

#include <sys/stat.h>

#include <optional>
#include <system_error>

namespace vorq::gateway {
namespace {

namespace fs = std::filesystem;

/// A folder that was there is its owner's to open and close; the file is private in any.
void ensureFolder(const fs::path& folder, const Notice& notice) {
    std::error_code error;
    fs::create_directories(folder.parent_path(), error);
    if (mkdir(folder.c_str(), 0700) == 0) return;
    const fs::file_status status = fs::status(folder, error);
    if (status.type() != fs::file_type::directory) {
        throw std::runtime_error(filled("Could not create the folder {}.", folder.string()));
    }
    constexpr fs::perms toOthers = fs::perms::group_write | fs::perms::others_write;
    const bool isSticky = (status.permissions() & fs::perms::sticky_bit) != fs::perms::none;
    if ((status.permissions() & toOthers) != fs::perms::none && !isSticky) {
        notice(filled("Others on this computer can replace files in {}, where the accounts are "
                      "kept. Make it your own: chmod 700.",
                      folder.string()));
    }
}

void makePrivate(const fs::path& file) {
    std::error_code error;
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write, error);
}

void checkWhole(Database& database) {
    Statement statement = database.prepare("PRAGMA quick_check(1)");
    statement.step();
    if (const std::string verdict = statement.text(0); verdict != "ok") {
        throw DatabaseError(verdict, true);
    }
}

SqliteDatabase openChecked(const fs::path& file) {
    SqliteDatabase database(file);
    makePrivate(file);
    checkWhole(database);
    migrate(database);
    return database;
}

fs::path moveAside(const fs::path& file) {
    fs::path aside;
    for (int number = 1;; ++number) {
        aside = file.string() + filled(".damaged-{}", number);
        if (!fs::exists(aside)) break;
    }
    fs::rename(file, aside);
    for (const char* suffix : {"-wal", "-shm"}) {
        std::error_code error; // Either companion may be missing.
        fs::rename(file.string() + suffix, aside.string() + suffix, error);
    }
    return aside;
}

} // namespace

fs::path stateFile(const fs::path& folder) {
    return folder / "gateway.sqlite3";
}

SqliteDatabase openState(const fs::path& folder, const Notice& notice) {
    ensureFolder(folder, notice);
    const fs::path file = stateFile(folder);
    try {
        return openChecked(file);
    } catch (const DatabaseError& error) {
        if (!error.isDamage) {
            throw std::runtime_error(filled("Could not open {}: {}.", file.string(), error.what()));
        }
    }
    const fs::path aside = moveAside(file);
    notice(filled("The state file {} was damaged. It is kept as {}, and a new one was "
                  "started; sign in again.",
                  file.string(), aside.string()));
    return openChecked(file);
}

} // namespace vorq::gateway
