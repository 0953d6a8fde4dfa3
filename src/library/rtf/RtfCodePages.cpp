#include "library/rtf/RtfCodePages.h"

#include <algorithm>
#include <array>
#include <unicode/ucnv.h>

namespace vorq {
namespace {

struct CharsetRow {
    int charset;
    int codePage;
};

constexpr auto charsets = std::to_array<CharsetRow>({
    {0, 1252},
    {2, RtfCodePages::symbol},
    {77, RtfCodePages::macRoman},
    {78, 10001},
    {79, 10003},
    {80, 10008},
    {81, 10002},
    {83, 10005},
    {84, 10004},
    {85, 10006},
    {86, 10081},
    {87, 10021},
    {88, 10029},
    {89, 10007},
    {128, 932},
    {129, 949},
    {130, 1361},
    {134, 936},
    {136, 950},
    {161, 1253},
    {162, 1254},
    {163, 1258},
    {177, 1255},
    {178, 1256},
    {186, 1257},
    {204, 1251},
    {222, 874},
    {238, 1250},
    {254, 437},
    {255, 850},
});

struct NameRow {
    int codePage;
    const char* name;
};

// What the converters of ICU are called when "windows-" or "ibm-" and the number is not their name.
constexpr auto names = std::to_array<NameRow>({
    {708, "ISO-8859-6"},       {709, "ISO-8859-6"},     {10000, "macintosh"},
    {10001, "Shift_JIS"},      {10002, "Big5"},         {10003, "EUC-KR"},
    {10004, "x-mac-arabic"},   {10005, "x-mac-hebrew"}, {10006, "x-mac-greek"},
    {10007, "x-mac-cyrillic"}, {10008, "GB2312"},       {10029, "x-mac-centraleurroman"},
    {10081, "x-mac-turkish"},  {20127, "US-ASCII"},     {20866, "KOI8-R"},
    {21866, "KOI8-U"},         {28591, "ISO-8859-1"},   {28592, "ISO-8859-2"},
    {28605, "ISO-8859-15"},    {50220, "ISO-2022-JP"},  {51932, "EUC-JP"},
    {51949, "EUC-KR"},         {54936, "GB18030"},      {65001, "UTF-8"},
});

UConverter* opened(const QByteArray& name) {
    UErrorCode error = U_ZERO_ERROR;
    return ucnv_open(name.constData(), &error);
}

UConverter* openedCodePage(int codePage) {
    const auto* const row = std::find_if(names.begin(), names.end(), [codePage](const NameRow& it) {
        return it.codePage == codePage;
    });
    if (row != names.end()) return opened(row->name);
    const QByteArray number = QByteArray::number(codePage);
    for (const char* const family : {"windows-", "ibm-", "cp"}) {
        if (UConverter* const converter = opened(family + number)) return converter;
    }
    return nullptr;
}

QString decodedSymbols(const QByteArray& bytes) {
    QString text;
    for (const char byte : bytes) {
        const auto code = static_cast<std::uint8_t>(byte);
        if (code == 0xB7 || code == 0xA7) // the bullets of the fonts Symbol and Wingdings
            text += u'•';
        else
            text += code <= 0x20 ? QChar(code) : QChar(0xF000 + code);
    }
    return text;
}

} // namespace

void RtfCodePages::CloseConverter::operator()(UConverter* converter) const {
    ucnv_close(converter);
}

std::optional<int> RtfCodePages::ofCharset(int charset) {
    for (const CharsetRow& row : charsets) {
        if (row.charset == charset) return row.codePage;
    }
    return std::nullopt;
}

UConverter* RtfCodePages::converter(int codePage) {
    const auto known = m_converters.find(codePage);
    if (known != m_converters.end()) return known->second.get();
    return m_converters.try_emplace(codePage, openedCodePage(codePage)).first->second.get();
}

QString RtfCodePages::decoded(const QByteArray& bytes, int codePage) {
    if (codePage == symbol) return decodedSymbols(bytes);
    UConverter* found = converter(codePage);
    if (!found && codePage != western) found = converter(western);
    if (!found) return QString::fromLatin1(bytes);
    // Each byte gives at most two units.
    QString text(bytes.size() * 2 + 1, Qt::Uninitialized);
    UErrorCode error = U_ZERO_ERROR;
    ucnv_reset(found);
    const int32_t length = ucnv_toUChars(found, reinterpret_cast<char16_t*>(text.data()),
                                         static_cast<int32_t>(text.size()), bytes.constData(),
                                         static_cast<int32_t>(bytes.size()), &error);
    if (U_FAILURE(error)) return QString::fromLatin1(bytes);
    text.truncate(length);
    return text;
}

} // namespace vorq
