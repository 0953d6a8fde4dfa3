#pragma once

#include <QChar>
#include <QLatin1StringView>

#include <cstdint>
#include <optional>

namespace vorq::rtf {

// The vocabulary of RTF, apart from format. For RtfReader.

/// Where the text of a group goes.
enum class Destination : std::uint8_t {
    Body,
    Skipped,
    Fonts,
    Colors,
    ExpandedColors,
    Styles,
    Marker, ///< what an item of a list begins with
};

enum class Break : std::uint8_t { None, Paragraph, Cell, Row };

/// Nothing for a word that names no destination. An ignorable word that is unknown does name one.
[[nodiscard]] std::optional<Destination> destinationOf(QLatin1StringView word, bool isIgnorable);

/// Null for a word that stands for no character.
[[nodiscard]] QChar characterOf(QLatin1StringView word);

[[nodiscard]] Break breakOf(QLatin1StringView word);

} // namespace vorq::rtf
