#pragma once

#include <bit>
#include <cstdint>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vorq {

// The inner loops of reading and writing JSON strings: characters that are the same in UTF-8 and
// UTF-16 and ask for no escape. Each function copies a block, good or not, and gives the number of
// characters up to the first that is none of those.

constexpr std::ptrdiff_t plainBlock = 16;

/// ASCII without the backslash.
inline std::ptrdiff_t widenPlainRun(const char* from, char16_t* to) {
#ifdef __SSE2__
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    const __m128i zero = _mm_setzero_si128();
    auto* out = reinterpret_cast<__m128i*>(to);
    _mm_storeu_si128(out, _mm_unpacklo_epi8(bytes, zero));
    _mm_storeu_si128(out + 1, _mm_unpackhi_epi8(bytes, zero));
    const __m128i special = _mm_or_si128(bytes, _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\')));
    return std::countr_zero(static_cast<unsigned>(_mm_movemask_epi8(special)) | 0x1'0000U);
#else
    std::ptrdiff_t length = plainBlock;
    for (std::ptrdiff_t index = plainBlock; index-- > 0;) {
        const auto c = static_cast<unsigned char>(from[index]);
        to[index] = c;
        if (c >= 0x80 || c == '\\') length = index;
    }
    return length;
#endif
}

/// ASCII from the blank on without quotation mark, backslash and one more character.
inline std::ptrdiff_t narrowPlainRun(const char16_t* from, char* to, char16_t more) {
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
    return std::countr_zero(static_cast<unsigned>(_mm_movemask_epi8(special)) | 0x1'0000U);
#else
    std::ptrdiff_t length = plainBlock;
    for (std::ptrdiff_t index = plainBlock; index-- > 0;) {
        const char16_t c = from[index];
        to[index] = static_cast<char>(c);
        if (c < 0x20 || c >= 0x80 || c == u'"' || c == u'\\' || c == more) length = index;
    }
    return length;
#endif
}

} // namespace vorq
