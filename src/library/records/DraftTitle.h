#pragma once

#include <QString>
#include <QStringView>

namespace vorq {

/// The title of a new note in the user's application for notes: the first line of its text as
/// plain text, cut; "Vorq" if there is none.
[[nodiscard]] QString draftTitle(QStringView text);

} // namespace vorq
