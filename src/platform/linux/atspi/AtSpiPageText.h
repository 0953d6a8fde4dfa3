#pragma once

#include <QString>
#include <QStringView>

namespace vorq {

/// The text of a page, put together from those of its parts: a block begins and ends a line, a
/// paragraph has an empty line before and after it, and the cells of a row are apart by tabs. A
/// part without text leaves no trace but the breaks around it.
class AtSpiPageText {
  public:
    void add(QStringView piece);
    void addBlock(QStringView piece) { addApart(piece, 1); }
    void addParagraph(QStringView piece) { addApart(piece, 2); }
    void addCell(QStringView piece);

    /// Lets a block that follows at once begin on this line.
    void keepLine() { m_keepsLine = true; }

    /// Whether the text is but the number or bullet before an item of a list.
    [[nodiscard]] bool isMarker() const;
    [[nodiscard]] const QString& text() const { return m_text; }

  private:
    void addApart(QStringView piece, qsizetype breaks);
    [[nodiscard]] qsizetype breaksAtEnd() const;

    QString m_text;
    qsizetype m_breaksDue = 0;
    bool m_keepsLine = false;
    bool m_hasCell = false;
};

} // namespace vorq
