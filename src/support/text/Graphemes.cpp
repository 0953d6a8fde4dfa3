#include "support/text/Graphemes.h"

#include <unicode/uchar.h>
#include <unicode/uscript.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <bit>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vorq {
namespace {

// Code units that neither extend the character before them nor take in what follows, and need no
// context. Only the ranges that matter for speed; the rest is looked up.
constexpr bool isPlain(char16_t unit) {
    if (unit < lowestJoiner) return unit != u'\r';
    return (unit >= 0x3040 && unit <= 0xA66E && unit != 0x3099 && unit != 0x309A) ||
           (unit >= 0x2010 && unit <= 0x2027) || (unit >= 0x2030 && unit <= 0x205F) ||
           (unit >= 0x0370 && unit <= 0x0482) || (unit >= 0x048A && unit <= 0x0590) ||
           (unit >= 0x2070 && unit <= 0x20CF) || (unit >= 0x2100 && unit <= 0x2CEE) ||
           (unit >= 0x3000 && unit <= 0x3029) || (unit >= 0xFF01 && unit <= 0xFF9D);
}

// Whether the code unit begins one of U+1F400 to U+1FBFF, the bulk of the emoji, none of which
// extends the character before it or takes in what follows, save a mark or a joiner.
constexpr bool beginsEmoji(char16_t unit) {
    return unit == 0xD83D || unit == 0xD83E;
}

#ifdef __SSE2__

// A bit for each of eight code units that is in the plain ranges of Latin text, of general
// punctuation, or of Chinese and Japanese.
unsigned plainBits(const char16_t* text) {
    const __m128i units = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    const auto equals = [units](int unit) {
        return _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(unit)));
    };
    const auto inRange = [units](int first, int last) {
        const __m128i offset = _mm_sub_epi16(units, _mm_set1_epi16(static_cast<short>(first)));
        const __m128i beyond =
            _mm_subs_epu16(offset, _mm_set1_epi16(static_cast<short>(last - first)));
        return _mm_cmpeq_epi16(beyond, _mm_setzero_si128());
    };
    const __m128i narrow = _mm_or_si128(inRange(0, lowestJoiner - 1), inRange(0x2010, 0x2027));
    const __m128i wide = _mm_or_si128(inRange(0x3000, 0x3029), inRange(0x3040, 0xA66E));
    const __m128i except =
        _mm_or_si128(equals(u'\r'), _mm_or_si128(equals(0x3099), equals(0x309A)));
    const __m128i plain = _mm_andnot_si128(except, _mm_or_si128(narrow, wide));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(plain, _mm_setzero_si128())));
}

#endif

// How many plain code units begin the text.
qsizetype plainRun(const char16_t* text, qsizetype size) {
    qsizetype run = 0;
#ifdef __SSE2__
    for (; run + 8 <= size; run += 8) {
        if (const unsigned bits = plainBits(text + run); bits != 0xFF)
            return run + std::countr_one(bits);
    }
#endif
    while (run < size && isPlain(text[run]))
        ++run;
    return run;
}

UGraphemeClusterBreak breakClass(char32_t codePoint) {
    return static_cast<UGraphemeClusterBreak>(
        u_getIntPropertyValue(static_cast<UChar32>(codePoint), UCHAR_GRAPHEME_CLUSTER_BREAK));
}

bool isPictograph(char32_t codePoint) {
    return u_hasBinaryProperty(static_cast<UChar32>(codePoint), UCHAR_EXTENDED_PICTOGRAPHIC) != 0;
}

bool isExtender(UGraphemeClusterBreak value) {
    return value == U_GCB_EXTEND || value == U_GCB_ZWJ || value == U_GCB_SPACING_MARK;
}

bool isControl(UGraphemeClusterBreak value) {
    return value == U_GCB_CONTROL || value == U_GCB_CR || value == U_GCB_LF;
}

bool joinsHangul(UGraphemeClusterBreak left, UGraphemeClusterBreak right) {
    switch (left) {
    case U_GCB_L:
        return right == U_GCB_L || right == U_GCB_V || right == U_GCB_LV || right == U_GCB_LVT;
    case U_GCB_LV:
    case U_GCB_V:
        return right == U_GCB_V || right == U_GCB_T;
    case U_GCB_LVT:
    case U_GCB_T:
        return right == U_GCB_T;
    default:
        return false;
    }
}

char32_t codePointAt(const char16_t* text, qsizetype index, qsizetype size) {
    char32_t codePoint = 0;
    U16_GET(text, 0, index, size, codePoint);
    return codePoint;
}

qsizetype unitsOf(char32_t codePoint) {
    return codePoint > 0xFFFF ? 2 : 1;
}

// All that joins through a virama is in the blocks from Devanagari to Malayalam.
constexpr bool mayBeConjunct(char32_t codePoint) {
    return codePoint >= 0x0900 && codePoint <= 0x0D7F;
}

// The scripts whose consonants join through a virama.
bool isConjunctScript(char32_t codePoint) {
    switch (u_getIntPropertyValue(static_cast<UChar32>(codePoint), UCHAR_SCRIPT)) {
    case USCRIPT_BENGALI:
    case USCRIPT_DEVANAGARI:
    case USCRIPT_GUJARATI:
    case USCRIPT_MALAYALAM:
    case USCRIPT_ORIYA:
    case USCRIPT_TELUGU:
        return true;
    default:
        return false;
    }
}

bool isConjunctPart(char32_t codePoint, UIndicSyllabicCategory category) {
    return mayBeConjunct(codePoint) &&
           u_getIntPropertyValue(static_cast<UChar32>(codePoint), UCHAR_INDIC_SYLLABIC_CATEGORY) ==
               category &&
           isConjunctScript(codePoint);
}

// What has been read of a character, and whether the next code point still belongs to it.
class Cluster {
  public:
    explicit Cluster(char32_t first) { take(first, breakClass(first)); }

    bool takes(char32_t next) {
        const UGraphemeClusterBreak nextClass = breakClass(next);
        if (!joins(next, nextClass)) return false;
        take(next, nextClass);
        return true;
    }

  private:
    enum class Emoji { None, Pictograph, Joined };
    enum class Conjunct { None, Consonant, Linked };

    bool joins(char32_t next, UGraphemeClusterBreak nextClass) const {
        if (m_last == U_GCB_CR && nextClass == U_GCB_LF) return true;
        if (isControl(m_last) || isControl(nextClass)) return false;
        if (isExtender(nextClass) || m_last == U_GCB_PREPEND) return true;
        if (m_oddRegion && nextClass == U_GCB_REGIONAL_INDICATOR) return true;
        if (m_emoji == Emoji::Joined && isPictograph(next)) return true;
        if (m_conjunct == Conjunct::Linked && isConjunctPart(next, U_INSC_CONSONANT)) return true;
        return joinsHangul(m_last, nextClass);
    }

    void take(char32_t next, UGraphemeClusterBreak nextClass) {
        m_last = nextClass;
        m_oddRegion = nextClass == U_GCB_REGIONAL_INDICATOR && !m_oddRegion;
        if (isPictograph(next))
            m_emoji = Emoji::Pictograph;
        else if (m_emoji == Emoji::Pictograph && nextClass == U_GCB_ZWJ)
            m_emoji = Emoji::Joined;
        else if (m_emoji != Emoji::Pictograph || nextClass != U_GCB_EXTEND)
            m_emoji = Emoji::None;
        takeConjunct(next);
    }

    void takeConjunct(char32_t next) {
        if (isConjunctPart(next, U_INSC_CONSONANT)) {
            m_conjunct = Conjunct::Consonant;
        } else if (m_conjunct != Conjunct::None) {
            const bool keeps =
                m_last == U_GCB_ZWJ ||
                (m_last == U_GCB_EXTEND && u_getCombiningClass(static_cast<UChar32>(next)) != 0);
            if (isConjunctPart(next, U_INSC_VIRAMA))
                m_conjunct = Conjunct::Linked;
            else if (!keeps)
                m_conjunct = Conjunct::None;
        }
    }

    UGraphemeClusterBreak m_last = U_GCB_OTHER;
    bool m_oddRegion = false;
    Emoji m_emoji = Emoji::None;
    Conjunct m_conjunct = Conjunct::None;
};

qsizetype lookedUpEnd(const char16_t* text, qsizetype start, qsizetype size) {
    const char32_t first = codePointAt(text, start, size);
    Cluster cluster(first);
    qsizetype end = start + unitsOf(first);
    while (end < size) {
        const char32_t next = codePointAt(text, end, size);
        if (!cluster.takes(next)) break;
        end += unitsOf(next);
    }
    return end;
}

// Whether whatever ends at `end`, and takes nothing in, ends a character there.
bool endsPlainly(const char16_t* text, qsizetype end, qsizetype size) {
    return end == size || isPlain(text[end]) || text[end] == u'\r';
}

inline qsizetype characterEnd(const char16_t* text, qsizetype start, qsizetype size) {
    if (isPlain(text[start]) && endsPlainly(text, start + 1, size)) return start + 1;
    if (beginsEmoji(text[start]) && start + 1 < size && U16_IS_TRAIL(text[start + 1]) &&
        endsPlainly(text, start + 2, size))
        return start + 2;
    return lookedUpEnd(text, start, size);
}

struct Skipped {
    qsizetype count = 0;
    qsizetype end = 0;
};

// Goes over at most `limit` characters.
Skipped skip(QStringView text, qsizetype limit) {
    const char16_t* const data = text.utf16();
    const qsizetype size = text.size();
    Skipped skipped;
    while (skipped.end < size && skipped.count < limit) {
        // All but the last of a run stand alone, whatever follows the run.
        const qsizetype left = std::min(size - skipped.end - 1, limit - skipped.count) + 1;
        const qsizetype alone = plainRun(data + skipped.end, left) - 1;
        if (alone > 0) {
            skipped.count += alone;
            skipped.end += alone;
        } else {
            ++skipped.count;
            skipped.end = characterEnd(data, skipped.end, size);
        }
    }
    return skipped;
}

} // namespace

qsizetype graphemeEnd(QStringView text, qsizetype start) {
    return characterEnd(text.utf16(), start, text.size());
}

qsizetype graphemeCount(QStringView text) {
    return skip(text, text.size()).count;
}

bool graphemeCountAtLeast(QStringView text, qsizetype count) {
    return text.size() >= count && skip(text, count).count >= count;
}

QStringView graphemePrefix(QStringView text, qsizetype count) {
    return text.first(skip(text, count).end);
}

std::vector<QStringView> splitGraphemes(QStringView text) {
    std::vector<QStringView> characters;
    characters.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype end = graphemeEnd(text, start);
        characters.push_back(text.sliced(start, end - start));
        start = end;
    }
    return characters;
}

bool extendsCharacterBefore(QStringView text, qsizetype index) {
    const char16_t unit = text.utf16()[index];
    if (isPlain(unit) || unit == u'\r' || beginsEmoji(unit)) return false;
    return isExtender(breakClass(codePointAt(text.utf16(), index, text.size())));
}

bool takesCharacterAfter(QStringView text, qsizetype index) {
    const char16_t unit = text.utf16()[index - 1];
    if (isPlain(unit) || unit == u'\r') return false;
    return breakClass(codePointAt(text.utf16(), index - 1, text.size())) == U_GCB_PREPEND;
}

} // namespace vorq
