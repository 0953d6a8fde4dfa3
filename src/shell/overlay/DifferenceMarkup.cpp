#include "shell/overlay/DifferenceMarkup.h"

#include "support/text/Text.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// A text in pieces, of whose blanks in a row but one would be shown.
class Styler final {
  public:
    void add(QStringView plain) {
        for (const QChar character : plain)
            add(character);
    }
    // The white space at the ends stays outside, where it is not drawn over.
    void addMarked(QStringView plain, QStringView tag, const QColor& color) {
        const QStringView words = trimmed(plain);
        if (words.isEmpty()) return add(plain);
        const qsizetype first = words.begin() - plain.begin();
        add(plain.first(first));
        m_styled += u"<font color=\"%1\"><%2>"_s.arg(color.name(), tag);
        add(words);
        m_styled += u"</%1></font>"_s.arg(tag);
        add(plain.sliced(first + words.size()));
    }
    [[nodiscard]] bool endsBlank() const { return m_isAfterBlank; }
    [[nodiscard]] const QString& styled() const { return m_styled; }

  private:
    void add(QChar character) {
        const bool isSpace = character == u' ' || character == u'\t';
        const bool isBreak = character == u'\n' || character == QChar::LineSeparator ||
                             character == QChar::ParagraphSeparator;
        if (isSpace)
            m_styled += m_isAfterBlank ? u"&nbsp;"_s : u" "_s;
        else if (isBreak)
            m_styled += u"<br>"_s;
        else if (character == u'<')
            m_styled += u"&lt;"_s;
        else if (character == u'>')
            m_styled += u"&gt;"_s;
        else if (character == u'&')
            m_styled += u"&amp;"_s;
        else if (character != u'\r')
            m_styled += character;
        m_isAfterBlank = isSpace || isBreak;
    }

    QString m_styled;
    bool m_isAfterBlank = true;
};

} // namespace

QString styledText(const QString& plain) {
    Styler styler;
    styler.add(plain);
    return styler.styled();
}

QString differenceMarkup(const std::vector<DifferencePart>& parts, const DifferenceColors& colors) {
    Styler styler;
    const DifferencePart* last = nullptr;
    for (const DifferencePart& part : parts) {
        // What took the place of something is told from it, though the texts have no blank there.
        const bool isInstead = last != nullptr && last->kind == DifferencePart::Kind::Removed &&
                               part.kind == DifferencePart::Kind::Added;
        if (isInstead && !styler.endsBlank() && !part.text.front().isSpace()) styler.add(u" ");
        last = &part;
        switch (part.kind) {
        case DifferencePart::Kind::Same:
            styler.add(part.text);
            break;
        case DifferencePart::Kind::Removed:
            styler.addMarked(part.text, u"s", colors.removed);
            break;
        case DifferencePart::Kind::Added:
            styler.addMarked(part.text, u"u", colors.added);
            break;
        }
    }
    return styler.styled();
}

} // namespace vorq
