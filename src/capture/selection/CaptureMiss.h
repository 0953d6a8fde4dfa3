#pragma once

#include <QString>

#include <cstdint>

namespace vorq {

/// Why a capture has no text.
enum class CaptureMiss : std::uint8_t {
    NothingHighlighted,
    NoAnswer, ///< the application did not answer in the time that a capture has
    Excluded, ///< the user has excluded the application
    Password, ///< a field for passwords has the focus
};

/// Tells the user. The application has no name if it is "".
[[nodiscard]] QString sentenceOf(CaptureMiss miss, const QString& application);

} // namespace vorq
