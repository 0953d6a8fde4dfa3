#pragma once

#include <QString>

#include <cstdint>

namespace vorq {

/// Why a file gives no list of records.
struct ReadFailure {
    enum class Kind : std::uint8_t {
        Missing,    ///< There is none, and a save would make it.
        Unreadable, ///< The system does not give it out.
        Damaged,    ///< It is not what it should be.
    };
    Kind kind = Kind::Missing;
    QString reason; ///< of what is unreadable, such as "Permission denied"
};

/// A file that did not read and is replaced now.
struct ReplacedFile {
    ReadFailure failure;
    QString keptName; ///< under which it stays beside the new one
};

} // namespace vorq
