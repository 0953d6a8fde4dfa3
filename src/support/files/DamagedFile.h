#pragma once

#include <QString>

#include <expected>

namespace vorq {

/// Gives a damaged file a second name beside it, "<name>.damaged-<time of its last change>", under
/// which it stays when the file is replaced; a copy where the file system knows no second names.
/// Gives that path, also if the file was kept before, and "" if there is nothing to keep: no file,
/// an empty one, or something else than a file. Behind a symbolic link it is the file it leads to.
[[nodiscard]] std::expected<QString, QString> keepDamagedFile(const QString& path);

} // namespace vorq
