#include "rendering/InlineEntities.h"

#include <QStringView>

#include <array>
#include <optional>
#include <utility>

namespace vorq {
namespace {

constexpr std::array<std::pair<QStringView, char16_t>, 16> named = {{{u"amp", u'&'},
                                                                     {u"lt", u'<'},
                                                                     {u"gt", u'>'},
                                                                     {u"quot", u'"'},
                                                                     {u"apos", u'\''},
                                                                     {u"nbsp", u'\u00A0'},
                                                                     {u"copy", u'©'},
                                                                     {u"reg", u'®'},
                                                                     {u"deg", u'°'},
                                                                     {u"times", u'×'},
                                                                     {u"middot", u'·'},
                                                                     {u"ndash", u'–'},
                                                                     {u"mdash", u'—'},
                                                                     {u"hellip", u'…'},
                                                                     {u"rarr", u'→'},
                                                                     {u"larr", u'←'}}};

std::optional<char32_t> numbered(QStringView name) {
    if (!name.startsWith(u'#')) return std::nullopt;
    const bool isHexadecimal = name.size() > 1 && name[1].toLower() == u'x';
    bool ok = false;
    const uint value = name.mid(isHexadecimal ? 2 : 1).toUInt(&ok, isHexadecimal ? 16 : 10);
    if (!ok) return std::nullopt;
    const bool isCharacter = value != 0 && value <= 0x10FFFF && (value < 0xD800 || value > 0xDFFF);
    return isCharacter ? char32_t(value) : char32_t(QChar::ReplacementCharacter);
}

std::optional<char32_t> meaningOf(QStringView name) {
    for (const auto& [known, character] : named)
        if (known == name) return character;
    return numbered(name);
}

} // namespace

QString decodedEntities(const QString& text) {
    QString decoded;
    qsizetype at = 0;
    while (at < text.size()) {
        const qsizetype mark = text.indexOf(u'&', at);
        const qsizetype end = mark < 0 ? -1 : text.indexOf(u';', mark);
        if (end < 0) break;
        const auto meaning = meaningOf(QStringView(text).mid(mark + 1, end - mark - 1));
        decoded += QStringView(text).mid(at, mark - at);
        if (meaning) decoded += QString::fromUcs4(&*meaning, 1);
        at = meaning ? end + 1 : mark + 1;
        if (!meaning) decoded += u'&';
    }
    return decoded + text.mid(at);
}

} // namespace vorq
