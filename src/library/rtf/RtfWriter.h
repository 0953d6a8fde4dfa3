#pragma once

#include "library/richtext/NoteRichText.h"

#include <QByteArray>

namespace vorq {

/// The text as RTF: plain ASCII, readable by any word processor, and by readRtf() without loss.
/// The style of a paragraph is written as a paragraph style that word processors know ("heading
/// 1"), beside its format.
[[nodiscard]] QByteArray writeRtf(const NoteRichText& text);

} // namespace vorq
