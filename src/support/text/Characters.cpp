#include "support/text/Characters.h"

#include "support/text/CodeUnits.h"
#include "support/text/Text.h"

#include <QString>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace vorq {
namespace {

char32_t firstCodePoint(QStringView text) {
    char32_t codePoint = 0;
    U16_GET(text.utf16(), 0, 0, text.size(), codePoint);
    return codePoint;
}

bool isAsciiUpper(char16_t unit) {
    return unit >= u'A' && unit <= u'Z';
}

bool isAsciiDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

} // namespace

bool standsApart(QStringView text, qsizetype index, qsizetype end) {
    const bool isPair = text[index] == u'\r';
    return (index == 0 || isPair || !takesCharacterAfter(text, index)) &&
           (end == text.size() || isPair || !extendsCharacterBefore(text, end));
}

qsizetype indexOfCharacters(QStringView text, QStringView pattern, qsizetype from) {
    for (qsizetype at = from;; ++at) {
        at = codeunits::find(text, at, pattern.front().unicode());
        if (at < 0 || isCharactersAt(text, at, pattern)) return at;
    }
}

bool containsCharacters(QStringView text, QStringView pattern) {
    return indexOfCharacters(text, pattern) >= 0;
}

bool isWhitespaceCharacter(QStringView character) {
    return isWhitespaceOrNewline(character.front().unicode());
}

bool isNumberCharacter(QStringView character) {
    const char16_t unit = character.front().unicode();
    if (unit < 0x80) return isAsciiDigit(unit);
    return u_getIntPropertyValue(static_cast<UChar32>(firstCodePoint(character)),
                                 UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

bool isUppercaseCharacter(QStringView character) {
    const char16_t unit = character.front().unicode();
    if (character.size() == 1 && unit < 0x80) return isAsciiUpper(unit);
    const char32_t codePoint = firstCodePoint(character);
    if (character.size() == (codePoint > 0xFFFF ? 2 : 1) &&
        u_hasBinaryProperty(static_cast<UChar32>(codePoint), UCHAR_UPPERCASE) != 0)
        return true;
    const QString text = character.toString();
    return text.toUpper() == text && text.toLower() != text;
}

QStringView firstCharacter(QStringView text) {
    return graphemePrefix(text, 1);
}

} // namespace vorq
