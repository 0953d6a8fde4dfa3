#include "library/rtf/RtfNames.h"

#include "support/text/Text.h"

#include <algorithm>
#include <array>

namespace vorq::rtf {
namespace {

struct StyleAlias {
    QStringView name;
    NoteTextStyle style;
};

// The first of each style is the one that is written.
constexpr auto styleAliases = std::to_array<StyleAlias>({
    {u"Title", NoteTextStyle::Title},
    {u"heading 1", NoteTextStyle::Heading},
    {u"heading 2", NoteTextStyle::Subheading},
    {u"Body Text", NoteTextStyle::Body},
    {u"HTML Preformatted", NoteTextStyle::Mono},
    {u"List Bullet", NoteTextStyle::BulletedList},
    {u"List Bullet 2", NoteTextStyle::DashedList},
    {u"List Number", NoteTextStyle::NumberedList},
    {u"Quote", NoteTextStyle::BlockQuote},
    {u"Text body", NoteTextStyle::Body},
    {u"Preformatted Text", NoteTextStyle::Mono},
    {u"Quotations", NoteTextStyle::BlockQuote},
    {u"List 1", NoteTextStyle::BulletedList},
    {u"Numbering 1", NoteTextStyle::NumberedList},
});

constexpr QStringView portableMonospacedFont = u"Courier New";

struct FontSuffix {
    QStringView text;
    NoteFontWeight weight;
    bool isItalic;
};

// The longer before what it ends with.
constexpr auto fontSuffixes = std::to_array<FontSuffix>({
    {u"-SemiboldItalic", NoteFontWeight::Semibold, true},
    {u"-Semibold", NoteFontWeight::Semibold, false},
    {u"-BoldItalic", NoteFontWeight::Bold, true},
    {u"-BoldOblique", NoteFontWeight::Bold, true},
    {u"-Bold", NoteFontWeight::Bold, false},
    {u"-Italic", NoteFontWeight::Regular, true},
    {u"-Oblique", NoteFontWeight::Regular, true},
    {u"-Regular", NoteFontWeight::Regular, false},
});

const FontSuffix* suffixOf(QStringView name) {
    const auto* const found =
        std::find_if(fontSuffixes.begin(), fontSuffixes.end(), [name](const FontSuffix& suffix) {
            return name.size() > suffix.text.size() && name.endsWith(suffix.text);
        });
    return found == fontSuffixes.end() ? nullptr : found;
}

bool beginsWithOneOf(QStringView name, std::initializer_list<QStringView> beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(), [name](QStringView beginning) {
        return name.startsWith(beginning, Qt::CaseInsensitive);
    });
}

} // namespace

QStringView styleName(NoteTextStyle style) {
    return styleAliases[static_cast<std::size_t>(style)].name;
}

std::optional<NoteTextStyle> styleNamed(QStringView name) {
    // Names may be followed by other names of the same style.
    const QStringView first = trimmed(name.first(std::max<qsizetype>(name.indexOf(u','), 0)));
    const QStringView wanted = first.isEmpty() ? trimmed(name) : first;
    for (const StyleAlias& alias : styleAliases) {
        if (wanted.compare(alias.name, Qt::CaseInsensitive) == 0) return alias.style;
    }
    return std::nullopt;
}

QString fontName(QStringView family, bool isSemibold) {
    // Every system has a font for this name, while unknown ones become proportional.
    QString name =
        family == monospacedFontFamily ? portableMonospacedFont.toString() : family.toString();
    if (isSemibold) name += u"-Semibold";
    return name;
}

NamedFont fontNamed(QStringView name) {
    NamedFont font;
    QStringView family = trimmed(name);
    for (const FontSuffix* suffix = suffixOf(family); suffix; suffix = suffixOf(family)) {
        family = trimmed(family.chopped(suffix->text.size()));
        font.weight = std::max(font.weight, suffix->weight);
        font.isItalic = font.isItalic || suffix->isItalic;
    }
    if (family == portableMonospacedFont ||
        beginsWithOneOf(family, {monospacedFontFamily, u".SFNSMono", u".SF NS Mono"}))
        family = monospacedFontFamily;
    else if (beginsWithOneOf(family, {systemFontFamily, u".SFNS", u".SF NS", u".SFUI",
                                      u".HelveticaNeueDeskInterface", u".LucidaGrandeUI"}))
        family = systemFontFamily;
    font.family = family.toString();
    return font;
}

} // namespace vorq::rtf
