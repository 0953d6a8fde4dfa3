#include "library/rtf/RtfFormat.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace vorq {
namespace {

using Handler = void (*)(RtfFormat& format, const RtfToken& word);

// A word without a number turns on, and so does any number but 0.
bool isOn(const RtfToken& word) {
    return !word.hasNumber || word.number != 0;
}

void resetCharacters(RtfFormat& format) {
    RtfFormat fresh;
    fresh.style = format.style;
    fresh.leftIndent = format.leftIndent;
    fresh.firstIndent = format.firstIndent;
    fresh.spaceBefore = format.spaceBefore;
    fresh.spaceAfter = format.spaceAfter;
    fresh.leading = format.leading;
    format = fresh;
}

void resetParagraph(RtfFormat& format) {
    format.style = 0;
    format.leftIndent = 0;
    format.firstIndent = 0;
    format.spaceBefore = 0;
    format.spaceAfter = 0;
    format.leading = 0;
}

template<bool RtfFormat::* Member>
void setFlag(RtfFormat& format, const RtfToken& word) {
    format.*Member = isOn(word);
}

template<int RtfFormat::* Member>
void setNumber(RtfFormat& format, const RtfToken& word) {
    format.*Member = word.number;
}

void setUnderlined(RtfFormat& format, const RtfToken& word) {
    format.isUnderlined = isOn(word);
}

const std::unordered_map<std::string_view, Handler>& handlers() {
    static const std::unordered_map<std::string_view, Handler> all = {
        {"plain", [](RtfFormat& format, const RtfToken&) { resetCharacters(format); }},
        {"pard", [](RtfFormat& format, const RtfToken&) { resetParagraph(format); }},
        {"f", setNumber<&RtfFormat::font>},
        {"fs",
         [](RtfFormat& format, const RtfToken& word) {
             format.size = word.number > 0 ? word.number / 2.0 : 12.0;
         }},
        {"fsmilli",
         [](RtfFormat& format, const RtfToken& word) {
             if (word.number > 0) format.size = word.number / 1000.0;
         }},
        {"b", setFlag<&RtfFormat::isBold>},
        {"i", setFlag<&RtfFormat::isItalic>},
        {"ul", setUnderlined},
        {"uld", setUnderlined},
        {"uldash", setUnderlined},
        {"uldb", setUnderlined},
        {"ulth", setUnderlined},
        {"ulw", setUnderlined},
        {"ulwave", setUnderlined},
        {"ulnone", [](RtfFormat& format, const RtfToken&) { format.isUnderlined = false; }},
        {"strike", setFlag<&RtfFormat::isStruckThrough>},
        {"striked", setFlag<&RtfFormat::isStruckThrough>},
        {"v", setFlag<&RtfFormat::isHidden>},
        {"deleted", setFlag<&RtfFormat::isDeleted>},
        {"cf", setNumber<&RtfFormat::color>},
        {"highlight", setNumber<&RtfFormat::highlight>},
        {"cb", setNumber<&RtfFormat::background>},
        {"chcbpat", setNumber<&RtfFormat::shading>},
        {"s", setNumber<&RtfFormat::style>},
        {"li", setNumber<&RtfFormat::leftIndent>},
        {"lin", setNumber<&RtfFormat::leftIndent>},
        {"fi", setNumber<&RtfFormat::firstIndent>},
        {"sb", setNumber<&RtfFormat::spaceBefore>},
        {"sa", setNumber<&RtfFormat::spaceAfter>},
        {"slleading", setNumber<&RtfFormat::leading>},
    };
    return all;
}

double points(double twips) {
    return twips / 20.0;
}

} // namespace

bool RtfFormat::apply(const RtfToken& word) {
    const auto found = handlers().find(
        std::string_view(word.word.data(), static_cast<std::size_t>(word.word.size())));
    if (found == handlers().end()) return false;
    found->second(*this, word);
    return true;
}

NoteAttributes RtfFormat::characterAttributes(const RtfTables& tables) const {
    const rtf::NamedFont& named = tables.font(font).named;
    NoteAttributes attributes;
    attributes.font.family = named.family;
    attributes.font.size = size;
    attributes.font.weight = named.weight;
    if (isBold && named.weight == NoteFontWeight::Regular)
        attributes.font.weight = NoteFontWeight::Bold;
    attributes.font.isItalic = isItalic || named.isItalic;
    attributes.color = tables.color(color);
    // Some give the nearest colour of a highlighter beside the true one.
    for (const int index : {background, shading, highlight}) {
        if (!attributes.highlight) attributes.highlight = tables.background(index);
    }
    attributes.isUnderlined = isUnderlined;
    attributes.isStruckThrough = isStruckThrough;
    return attributes;
}

void RtfFormat::applyToParagraph(NoteAttributes& attributes, const RtfTables& tables) const {
    attributes.paragraph = {.spacing = points(spaceAfter),
                            .spacingBefore = points(spaceBefore),
                            .lineSpacing = points(leading),
                            .headIndent = points(leftIndent),
                            .firstLineIndent =
                                points(static_cast<double>(leftIndent) + firstIndent)};
    attributes.style = tables.style(style);
}

} // namespace vorq
