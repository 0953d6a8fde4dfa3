#pragma once

#include <QString>

#include <cstdint>
#include <vector>

namespace vorq {

/// A stretch of two texts that are compared word by word.
struct DifferencePart {
    enum class Kind : std::uint8_t { Same, Removed, Added };
    Kind kind = Kind::Same;
    QString text;

    bool operator==(const DifferencePart&) const = default;
};

/// How the new text came of the old one, with words left whole: what is the same and what was
/// removed, put together, are the old text; what is the same and what was added, the new one. What
/// was removed stands before what was added in its place, and neighbours are of different kinds.
///
/// Finds the least difference where that is quick to find; it never takes long, and where the texts
/// have little in common it says so instead of picking out single words.
[[nodiscard]] std::vector<DifferencePart> wordDifference(QStringView before, QStringView after);

/// The difference for who hears it: "removed …, added …", without what is the same.
[[nodiscard]] QString spokenDifference(const std::vector<DifferencePart>& parts);

} // namespace vorq
