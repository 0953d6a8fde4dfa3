#pragma once

#include <QStringView>

#include <cstdint>

namespace vorq {

/// What a paragraph of a note is.
enum class NoteTextStyle : std::uint8_t {
    Title,
    Heading,
    Subheading,
    Body,
    Mono,
    BulletedList,
    DashedList,
    NumberedList,
    BlockQuote,
};

inline constexpr int noteTextStyleCount = 9;

/// "title", "heading", "subheading", "body", "mono", "bulletedList", "dashedList", "numberedList"
/// or "blockQuote".
[[nodiscard]] QStringView identity(NoteTextStyle style);

} // namespace vorq
