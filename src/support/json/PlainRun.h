#pragma once

#include <bit>
#include <cstddef>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vorq {

// The inner steps of reading and writing JSON strings: characters that are the same in UTF-8 and
// UTF-16 and ask for no escape. Each copies a block, good or not, and gives a bit for each
// character that is none of those, the first the lowest. So that a loop need not wait for the bits
// to know where it goes on, it should advance by a constant where there are none.

constexpr std::ptrdiff_t plainBlock = 16;

/// ASCII without the backslash.
inline unsigned widenBlock(const char* from, char16_t* to) {
#ifdef __SSE2__
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const __m128i zero = _mm_setzero_si128();
    auto* out = reinterpret_cast<__m128i*>(to);
    _mm_storeu_si128(out, _mm_unpacklo_epi8(bytes, zero));
    _mm_storeu_si128(out + 1, _mm_unpackhi_epi8(bytes, zero));
    const __m128i special = _mm_or_si128(bytes, _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\')));
    return static_cast<unsigned>(_mm_movemask_epi8(special));
#else
    unsigned special = 0;
    for (std::ptrdiff_t index = 0; index < plainBlock; ++index) {
        const auto c = static_cast<unsigned char>(from[index]);
        to[index] = c;
        special |= static_cast<unsigned>(c >= 0x80 || c == '\\') << index;
    }
    return special;
#endif
}

/// ASCII from the blank on without quotation mark, backslash and one more character.
inline unsigned narrowBlock(const char16_t* from, char* to, char16_t more) {
#ifdef __SSE2__
    const auto* in = reinterpret_cast<const __m128i*>(from);
    const __m128i first = _mm_loadu_si128(in);
    const __m128i second = _mm_loadu_si128(in + 1);
    // As signed numbers: what is above ASCII becomes 255 or 0, which as a byte is below the blank.
    const __m128i bytes = _mm_packus_epi16(first, second);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
    __m128i special = _mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20));
    special = _mm_or_si128(special, _mm_cmpeq_epi8(bytes, _mm_set1_epi8('"')));
    special = _mm_or_si128(special, _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\')));
    special = _mm_or_si128(special, _mm_cmpeq_epi8(bytes, _mm_set1_epi8(static_cast<char>(more))));
    return static_cast<unsigned>(_mm_movemask_epi8(special));
#else
    unsigned special = 0;
    for (std::ptrdiff_t index = 0; index < plainBlock; ++index) {
        const char16_t c = from[index];
        to[index] = static_cast<char>(c);
        const bool isPlain = c >= 0x20 && c < 0x80 && c != u'"' && c != u'\\' && c != more;
        special |= static_cast<unsigned>(!isPlain) << index;
    }
    return special;
#endif
}

/// Copies by whole blocks while they last and all is plain, and moves both places to where it
/// stopped. `copy` does the step.
template<typename From, typename To, typename Copy>
inline void copyPlainBlocks(const From*& from, const From* end, To*& to, Copy copy) {
    while (end - from >= plainBlock) {
        const unsigned special = copy(from, to);
        if (special != 0) {
            const int plain = std::countr_zero(special);
            from += plain;
            to += plain;
            return;
        }
        from += plainBlock;
        to += plainBlock;
    }
}

} // namespace vorq
