#pragma once

#include <QString>

namespace vorq {

/// What a note is read as: its body if there is one, else the text it was made from; both trimmed.
[[nodiscard]] QString studySource(QStringView text, QStringView thoughts);

} // namespace vorq
