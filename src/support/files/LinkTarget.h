#pragma once

#include <QByteArray>
#include <QString>

namespace vorq {

/// Where the symbolic links at the path lead, whether a file is there or not; an absolute path in
/// the encoding of the file system. Of links in a circle, the path itself.
[[nodiscard]] QByteArray linkTarget(const QString& path);

/// The folder that an entry of this path is in.
[[nodiscard]] QByteArray folderOf(const QByteArray& path);

} // namespace vorq
