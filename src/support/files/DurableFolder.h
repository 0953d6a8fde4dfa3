#pragma once

#include <QByteArray>
#include <QString>

#include <expected>

namespace vorq {

/// Makes the folder and those it is in, as far as they are not there, each lasting on the disk.
/// The error says what the system had against it.
std::expected<void, QString> ensureFolder(const QString& path);

/// Makes the names in a folder last, as the content of its files does.
void flushFolder(const QByteArray& path);

} // namespace vorq
