#pragma once

#include <QStringView>

#include <optional>

namespace vorq {

/// Cuts a long paragraph, one after the other, into paragraphs of one or two sentences.
///
/// The text is trimmed; the paragraphs point into it and stand one blank apart. A text of fewer
/// than three sentences or of fewer than 280 characters is the only paragraph.
class DenseParagraphs {
  public:
    explicit DenseParagraphs(QStringView text);

    /// The next paragraph, or nothing after the last.
    [[nodiscard]] std::optional<QStringView> next();

  private:
    QStringView m_rest;
    bool m_isDense;
};

} // namespace vorq
