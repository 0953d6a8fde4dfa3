#pragma once

#include <QDir>
#include <QStringList>

namespace vorq {

/// The names in a folder that begin and end in such a way, sorted. The patterns of QDir do the
/// same, but the first one takes half a megabyte. Any thread.
[[nodiscard]] QStringList fileNames(const QString& folder, QLatin1StringView start,
                                    QLatin1StringView end, QDir::Filters kinds = QDir::Files);

} // namespace vorq
