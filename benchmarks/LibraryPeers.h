#pragma once

#include "library/records/SavedNote.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace vorq::bench {

// The same notes by other means, as a program would that takes each library as it comes. They check
// no more than they must to fill the records, and end the program if that fails.

[[nodiscard]] std::vector<SavedNote> loadByOnDemand(const QString& path);
[[nodiscard]] std::vector<SavedNote> loadByRapidJson(const QString& path);
[[nodiscard]] std::vector<SavedNote> loadByQJson(const QString& path);

/// RapidJSON's writer without indentation, fed with UTF-16, which it converts itself.
[[nodiscard]] std::size_t encodeByRapidJson16(const std::vector<SavedNote>& notes);
/// The same, fed with what Qt converts.
[[nodiscard]] std::size_t encodeByRapidJson8(const std::vector<SavedNote>& notes);

/// Write, flush, rename.
void savePlainly(const QString& path, const QByteArray& content);

} // namespace vorq::bench
