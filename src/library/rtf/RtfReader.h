#pragma once

#include "library/richtext/NoteRichText.h"

#include <QByteArrayView>

#include <optional>

namespace vorq {

/// The text of an RTF document with its format, whoever wrote it. Nothing if this is no RTF; what
/// is broken or cut off is read as far as it goes. Pictures, headers, comments and hidden text are
/// left out; the cells of a table are separated by tabs. Linear in the bytes, any of which are
/// fine.
[[nodiscard]] std::optional<NoteRichText> readRtf(QByteArrayView rtf);

} // namespace vorq
