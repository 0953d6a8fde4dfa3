#pragma once

#include "platform/Accessibility.h"

#include <QString>

#include <vector>

namespace vorq {

/// The words of a text, as Unicode bounds them: what holds a letter or a digit.
class SelectionWords final {
  public:
    explicit SelectionWords(QString text);

    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] qsizetype count() const { return static_cast<qsizetype>(m_words.size()); }

    /// Where a word, or several that stand together, occurs as a whole, first to last. Either the
    /// very spelling or, if that is nowhere, whatever the case.
    [[nodiscard]] std::vector<TextRange> occurrencesOf(QStringView word) const;

    /// Of the word that begins last at or before a place: how many are before it.
    [[nodiscard]] qsizetype indexAt(qsizetype location) const;
    /// The word before the one at a place; "" for none, and none on another line.
    [[nodiscard]] QStringView wordBefore(qsizetype location) const;

  private:
    [[nodiscard]] std::vector<TextRange> find(QStringView word, Qt::CaseSensitivity by) const;
    [[nodiscard]] bool isBoundary(qsizetype at) const;

    QString m_text;
    std::vector<TextRange> m_words;
    std::vector<bool> m_isBoundary; // one more than there are units
};

/// What the range has of the text; "" for one that is not within it.
[[nodiscard]] QStringView sliceOf(QStringView text, TextRange range);

} // namespace vorq
