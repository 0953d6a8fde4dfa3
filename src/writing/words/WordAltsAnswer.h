#pragma once

#include <QString>

#include <vector>

namespace vorq {

/// An alternative as a model wrote it.
struct OfferedWordAlt {
    QString word;
    QString alternative;
    /// Which one of several of this word, from 1; 0 if it does not say.
    int occurrence = 0;
    /// Some of the text around it; "" if it does not say.
    QString context;

    bool operator==(const OfferedWordAlt&) const = default;
};

/// More than this is no answer to the question.
inline constexpr qsizetype longestWordAltsAnswer = 200'000;
inline constexpr std::size_t mostOfferedWordAlts = 200;

/// The alternatives in the order of the answer: from JSON as models write it, inside fences, with
/// talk around it, under other keys, with commas that are missing or too many, broken off, or
/// escaped once more. Nothing of one too long. Linear.
[[nodiscard]] std::vector<OfferedWordAlt> readWordAlts(QStringView answer);

} // namespace vorq
