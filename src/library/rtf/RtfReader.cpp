#include "library/rtf/RtfReader.h"

#include "library/rtf/RtfBody.h"
#include "library/rtf/RtfCodePages.h"
#include "library/rtf/RtfFormat.h"
#include "library/rtf/RtfLexer.h"
#include "library/rtf/RtfTables.h"
#include "library/rtf/RtfWords.h"

#include <algorithm>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using rtf::Destination;

class Reader {
  public:
    explicit Reader(QByteArrayView rtf) : m_lexer(rtf) {}

    NoteRichText read() {
        while (true) {
            const RtfToken token = m_lexer.next();
            if (token.kind == RtfToken::Kind::End || isLastEnd(token)) break;
            take(token);
        }
        flush();
        m_body.endDocument(m_state.format, m_tables);
        return m_body.takeText();
    }

  private:
    struct State {
        Destination destination = Destination::Body;
        std::optional<Destination> beyondUpr; // where the better of two forms belongs
        RtfFormat format;
        int fallbackLength = 1; // of characters given by number
    };

    // Deeper groups are read as part of the one they are in.
    static constexpr std::size_t deepest = 1000;

    bool isLastEnd(const RtfToken& token) const {
        return token.kind == RtfToken::Kind::GroupEnd && m_outer.size() <= 1 && m_tooDeep == 0;
    }

    void take(const RtfToken& token) {
        const bool isIgnorable = std::exchange(m_isIgnorable, false);
        switch (token.kind) {
        case RtfToken::Kind::GroupStart:
            return startGroup();
        case RtfToken::Kind::GroupEnd:
            return endGroup();
        case RtfToken::Kind::Word:
            return takeWord(token, isIgnorable);
        case RtfToken::Kind::Symbol:
            return takeSymbol(token.byte);
        case RtfToken::Kind::Hex:
            return takeHex(token.byte);
        case RtfToken::Kind::Text:
            return takeText(token.text);
        case RtfToken::Kind::Binary:
        case RtfToken::Kind::Broken:
        case RtfToken::Kind::End:
            return;
        }
    }

    void startGroup() {
        flush();
        m_fallback = 0;
        if (m_outer.size() < deepest)
            m_outer.push_back(m_state);
        else
            ++m_tooDeep;
    }

    void endGroup() {
        flush();
        m_fallback = 0;
        if (m_tooDeep > 0) {
            --m_tooDeep;
        } else {
            m_state = m_outer.back();
            m_outer.pop_back();
        }
    }

    void takeWord(const RtfToken& token, bool isIgnorable) {
        if (const QChar character = rtf::characterOf(token.word); !character.isNull())
            return takeCharacter(character);
        flush();
        m_fallback = token.word == "u"_L1 ? m_fallback : 0;
        if (takeUnicode(token) || takeDestination(token, isIgnorable)) return;
        if (const auto table = tableOf(m_state.destination)) {
            m_tables.word(*table, token);
        } else if (!takeDocumentWord(token) && !m_state.format.apply(token) &&
                   m_state.destination == Destination::Body) {
            takeBreak(rtf::breakOf(token.word));
        }
    }

    bool takeUnicode(const RtfToken& token) {
        if (token.word == "uc"_L1) {
            m_state.fallbackLength = std::max(token.number, 0);
        } else if (token.word == "u"_L1 && token.hasNumber) {
            emitText(QChar(static_cast<char16_t>(token.number)));
            m_fallback = m_state.fallbackLength;
        } else {
            return false;
        }
        return true;
    }

    bool takeDestination(const RtfToken& token, bool isIgnorable) {
        if (token.word == "upr"_L1) {
            m_state.beyondUpr = m_state.destination;
            m_state.destination = Destination::Skipped;
            return true;
        }
        if (token.word == "ud"_L1 && m_state.beyondUpr) {
            m_state.destination = *std::exchange(m_state.beyondUpr, std::nullopt);
            return true;
        }
        const std::optional<Destination> destination = rtf::destinationOf(token.word, isIgnorable);
        if (!destination) return false;
        // What is in a part that is left out is left out, whatever it is.
        if (m_state.destination != Destination::Skipped) m_state.destination = *destination;
        return true;
    }

    bool takeDocumentWord(const RtfToken& token) {
        if (token.word == "ansicpg"_L1)
            m_codePage = token.number;
        else if (token.word == "mac"_L1)
            m_codePage = RtfCodePages::macRoman;
        else if (token.word == "pc"_L1)
            m_codePage = 437;
        else if (token.word == "pca"_L1)
            m_codePage = 850;
        else if (token.word == "deff"_L1)
            m_tables.setDefaultFont(token.number);
        else
            return false;
        return true;
    }

    void takeSymbol(std::uint8_t symbol) {
        switch (symbol) {
        case '\\':
        case '{':
        case '}': {
            const char byte = static_cast<char>(symbol);
            return takeText(QByteArrayView(&byte, 1));
        }
        case '~':
            return takeCharacter(u'\u00A0');
        case '-':
            return takeCharacter(u'\u00AD');
        case '_':
            return takeCharacter(u'\u2011');
        case '\t':
            return takeCharacter(u'\t');
        case '\n':
        case '\r':
            flush();
            return takeBreak(rtf::Break::Paragraph);
        case '*':
            m_isIgnorable = true;
            return;
        default:
            return;
        }
    }

    void takeHex(std::uint8_t byte) {
        const char character = static_cast<char>(byte);
        if (m_fallback == 0 && (character == '\n' || character == '\r')) {
            flush();
            return takeBreak(rtf::Break::Paragraph);
        }
        takeBytes(QByteArrayView(&character, 1));
    }

    void takeText(QByteArrayView text) {
        const auto table = tableOf(m_state.destination);
        if (!table) return takeBytes(text);
        for (qsizetype end = text.indexOf(';'); end >= 0; end = text.indexOf(';')) {
            takeBytes(text.first(end));
            flush();
            m_tables.endEntry(*table);
            text = text.sliced(end + 1);
        }
        takeBytes(text);
    }

    void takeBytes(QByteArrayView bytes) {
        const qsizetype skipped = std::min<qsizetype>(m_fallback, bytes.size());
        m_fallback -= static_cast<int>(skipped);
        if (m_state.destination != Destination::Skipped) m_bytes += bytes.sliced(skipped);
    }

    void takeCharacter(QChar character) {
        if (m_fallback > 0) {
            --m_fallback;
            return;
        }
        flush();
        emitText(character);
    }

    void takeBreak(rtf::Break what) {
        m_fallback = 0;
        if (m_state.destination != Destination::Body || isInvisible()) return;
        switch (what) {
        case rtf::Break::None:
            return;
        case rtf::Break::Paragraph:
            return m_body.endParagraph(m_state.format, m_tables);
        case rtf::Break::Cell:
            return m_body.endCell();
        case rtf::Break::Row:
            return m_body.endRow(m_state.format, m_tables);
        }
    }

    bool isInvisible() const { return m_state.format.isHidden || m_state.format.isDeleted; }

    void flush() {
        if (m_bytes.isEmpty()) return;
        const QByteArray bytes = std::exchange(m_bytes, {});
        emitText(m_codePages.decoded(bytes, codePage()));
    }

    int codePage() const {
        const bool isInFonts = m_state.destination == Destination::Fonts;
        if (!isInFonts && tableOf(m_state.destination)) return m_codePage;
        const RtfTables::Font& font =
            isInFonts ? m_tables.openFont() : m_tables.font(m_state.format.font);
        if (font.codePage.value_or(0) > 0) return *font.codePage;
        const int charset = font.charset.value_or(1);
        // The western character set leaves documents alone that are in no code page of Windows.
        const bool isWindows = m_codePage < 10000 && m_codePage != 437 && m_codePage != 850;
        if (charset == 0 && !isWindows) return m_codePage;
        if (isInFonts && charset == 2) return m_codePage; // names are not in symbols
        return RtfCodePages::ofCharset(charset).value_or(m_codePage);
    }

    void emitText(QStringView text) {
        if (tableOf(m_state.destination)) return m_tables.text(text);
        if (m_state.destination == Destination::Marker) return m_body.appendMarker(text);
        if (m_state.destination != Destination::Body || isInvisible()) return;
        for (qsizetype end = text.indexOf(u'\n'); end >= 0; end = text.indexOf(u'\n')) {
            m_body.append(text.first(end), m_state.format, m_tables);
            m_body.endParagraph(m_state.format, m_tables);
            text = text.sliced(end + 1);
        }
        m_body.append(text, m_state.format, m_tables);
    }

    void emitText(QChar character) { emitText(QStringView(&character, 1)); }

    static std::optional<RtfTables::Table> tableOf(Destination destination) {
        switch (destination) {
        case Destination::Fonts:
            return RtfTables::Table::Fonts;
        case Destination::Colors:
            return RtfTables::Table::Colors;
        case Destination::ExpandedColors:
            return RtfTables::Table::ExpandedColors;
        case Destination::Styles:
            return RtfTables::Table::Styles;
        default:
            return std::nullopt;
        }
    }

    RtfLexer m_lexer;
    RtfCodePages m_codePages;
    RtfTables m_tables;
    RtfBody m_body;
    State m_state;
    std::vector<State> m_outer;
    qsizetype m_tooDeep = 0;
    int m_codePage = RtfCodePages::western;
    int m_fallback = 0;         // characters still to be passed over, for readers without Unicode
    bool m_isIgnorable = false; // the next word may be unknown: then its group is passed over
    QByteArray m_bytes;         // of one destination and one format, still to be decoded
};

} // namespace

std::optional<NoteRichText> readRtf(QByteArrayView rtf) {
    QByteArrayView document = rtf;
    if (document.startsWith("\xEF\xBB\xBF")) document = document.sliced(3);
    document = document.trimmed();
    if (!document.startsWith("{\\rtf")) return std::nullopt;
    return Reader(document).read();
}

} // namespace vorq
