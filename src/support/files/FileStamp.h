#pragma once

#include <QString>

#include <cstdint>

namespace vorq {

/// What tells one content of a file from another without reading it. All zero where no file is.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;    // bytes
    std::int64_t changed = 0; // nanoseconds since 1970

    bool operator==(const FileStamp&) const = default;
};

/// The file at the path or where a symbolic link there leads.
[[nodiscard]] FileStamp fileStamp(const QString& path);
/// The file of an open descriptor.
[[nodiscard]] FileStamp fileStamp(int file);

} // namespace vorq
