#include "support/text/CharacterBlocks.h"

#ifdef __SSE2__

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <tmmintrin.h>

namespace vorq {
namespace {

constexpr std::ptrdiff_t blockSize = 4;

// Which bytes of four characters stand in the text: of each the first, the second if its bit is set
// in the lower half of the number, and the third if it is in the upper half.
constexpr auto packings = [] {
    std::array<std::array<std::uint8_t, 16>, 256> all{};
    for (unsigned number = 0; number < all.size(); ++number) {
        std::size_t size = 0;
        for (unsigned index = 0; index < blockSize; ++index) {
            const unsigned bytes =
                1 + (number >> index & 1U) + (number >> (blockSize + index) & 1U);
            for (unsigned byte = 0; byte < bytes; ++byte)
                all[number][size++] = static_cast<std::uint8_t>(4 * index + byte);
        }
    }
    return all;
}();

__attribute__((target("ssse3"))) __m128i either(__m128i condition, __m128i yes, __m128i no) {
    return _mm_or_si128(_mm_and_si128(condition, yes), _mm_andnot_si128(condition, no));
}

__attribute__((target("ssse3"))) __m128i continuation(__m128i bits) {
    return _mm_or_si128(_mm_and_si128(bits, _mm_set1_epi32(0x3F)), _mm_set1_epi32(0x80));
}

// The units that are half a pair or are escaped.
__attribute__((target("ssse3"))) __m128i specialUnits(__m128i units, char16_t more) {
    const __m128i kind = _mm_and_si128(units, _mm_set1_epi32(0xF800));
    __m128i special = _mm_cmpeq_epi32(kind, _mm_set1_epi32(0xD800));
    special = _mm_or_si128(special, _mm_cmplt_epi32(units, _mm_set1_epi32(0x20)));
    special = _mm_or_si128(special, _mm_cmpeq_epi32(units, _mm_set1_epi32('"')));
    special = _mm_or_si128(special, _mm_cmpeq_epi32(units, _mm_set1_epi32('\\')));
    return _mm_or_si128(special, _mm_cmpeq_epi32(units, _mm_set1_epi32(more)));
}

} // namespace

bool hasCharacterBlocks() {
    static const bool has = __builtin_cpu_supports("ssse3") != 0;
    return has;
}

__attribute__((target("ssse3"))) void
copyCharacterBlocks(const char16_t*& from, const char16_t* end, char*& to, char16_t more) {
    const char16_t* at = from;
    char* place = to;
    for (; end - at >= blockSize; at += blockSize) {
        const __m128i units = _mm_unpacklo_epi16(
            _mm_loadl_epi64(reinterpret_cast<const __m128i*>(at)), _mm_setzero_si128());
        const __m128i isLong = _mm_cmpgt_epi32(units, _mm_set1_epi32(0x7F));
        const __m128i isLonger = _mm_cmpgt_epi32(units, _mm_set1_epi32(0x7FF));
        const int longs = _mm_movemask_ps(_mm_castsi128_ps(isLong));
        if (longs == 0 || _mm_movemask_epi8(specialUnits(units, more)) != 0) break;
        const __m128i last = continuation(units);
        const __m128i middle = continuation(_mm_srli_epi32(units, 6));
        const __m128i two = _mm_or_si128(
            _mm_or_si128(_mm_srli_epi32(units, 6), _mm_set1_epi32(0xC0)), _mm_slli_epi32(last, 8));
        const __m128i three =
            _mm_or_si128(_mm_or_si128(_mm_srli_epi32(units, 12), _mm_set1_epi32(0xE0)),
                         _mm_or_si128(_mm_slli_epi32(middle, 8), _mm_slli_epi32(last, 16)));
        const __m128i bytes = either(isLonger, three, either(isLong, two, units));
        const auto number =
            static_cast<unsigned>(longs | _mm_movemask_ps(_mm_castsi128_ps(isLonger)) << blockSize);
        const __m128i packing =
            _mm_loadu_si128(reinterpret_cast<const __m128i*>(packings[number].data()));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(place), _mm_shuffle_epi8(bytes, packing));
        place += blockSize + std::popcount(number);
    }
    from = at;
    to = place;
}

} // namespace vorq

#else

namespace vorq {

bool hasCharacterBlocks() {
    return false;
}

void copyCharacterBlocks(const char16_t*& /*from*/, const char16_t* /*end*/, char*& /*to*/,
                         char16_t /*more*/) {}

} // namespace vorq

#endif
