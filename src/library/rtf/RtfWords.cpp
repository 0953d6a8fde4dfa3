#include "library/rtf/RtfWords.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace vorq::rtf {
namespace {

using Word = std::string_view;

Word view(QLatin1StringView word) {
    return {word.data(), static_cast<std::size_t>(word.size())};
}

template<typename Value>
Value valueOf(const std::unordered_map<Word, Value>& values, QLatin1StringView word,
              Value otherwise) {
    const auto found = values.find(view(word));
    return found == values.end() ? otherwise : found->second;
}

// Parts of a document that are not its text and are not marked as ignorable everywhere.
constexpr Word skippedParts =
    "aftncn aftnsep aftnsepc annotation atnauthor atndate atnicn atnid atnparent atnref "
    "atntime bkmkend bkmkstart colorschememapping datafield datastore docvar falt filetbl "
    "fldinst fontemb footer footerf footerl footerr formfield ftncn ftnsep ftnsepc generator "
    "header headerf headerl headerr info latentstyles listoverridetable listtable mmathPr "
    "NeXTGraphic nonesttables nonshppict objclass objdata objname objtime panose pgdsctbl "
    "pict picprop pn pntxta pntxtb private protusertbl revtbl rsidtbl rxe shprslt sp tc "
    "template themedata txe userprops wgrffmtfilter xe xmlnstbl";

std::unordered_set<Word> wordsOf(Word list) {
    std::unordered_set<Word> words;
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find(' ', start), list.size());
        words.insert(list.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

bool isSkippedPart(QLatin1StringView word) {
    static const std::unordered_set<Word> words = wordsOf(skippedParts);
    return words.contains(view(word));
}

} // namespace

std::optional<Destination> destinationOf(QLatin1StringView word, bool isIgnorable) {
    static const std::unordered_map<Word, Destination> destinations = {
        {"fonttbl", Destination::Fonts},
        {"colortbl", Destination::Colors},
        {"expandedcolortbl", Destination::ExpandedColors},
        {"stylesheet", Destination::Styles},
        {"listtext", Destination::Marker},
        {"pntext", Destination::Marker},
        {"shpinst", Destination::Body}, // its text is in a part of its own
        {"shptxt", Destination::Body},
    };
    const auto found = destinations.find(view(word));
    if (found != destinations.end()) return found->second;
    if (isIgnorable || isSkippedPart(word)) return Destination::Skipped;
    return std::nullopt;
}

QChar characterOf(QLatin1StringView word) {
    static const std::unordered_map<Word, QChar> characters = {
        {"bullet", u'•'},        {"emdash", u'—'},       {"emspace", u'\u2003'},
        {"endash", u'–'},        {"enspace", u'\u2002'}, {"lbr", u'\u2028'},
        {"ldblquote", u'“'},     {"line", u'\u2028'},    {"lquote", u'‘'},
        {"ltrmark", u'\u200E'},  {"page", u'\f'},        {"qmspace", u'\u2005'},
        {"rdblquote", u'”'},     {"rquote", u'’'},       {"rtlmark", u'\u200F'},
        {"softline", u'\u2028'}, {"tab", u'\t'},         {"zwbo", u'\u200B'},
        {"zwj", u'\u200D'},      {"zwnbo", u'\u2060'},   {"zwnj", u'\u200C'},
    };
    return valueOf(characters, word, QChar());
}

Break breakOf(QLatin1StringView word) {
    static const std::unordered_map<Word, Break> breaks = {
        {"par", Break::Paragraph}, {"sect", Break::Paragraph}, {"cell", Break::Cell},
        {"nestcell", Break::Cell}, {"row", Break::Row},        {"nestrow", Break::Row},
    };
    return valueOf(breaks, word, Break::None);
}

} // namespace vorq::rtf
