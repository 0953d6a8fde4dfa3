#pragma once

#include <QStringView>

#include <bit>
#include <concepts>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vorq {

/// Searches for single UTF-16 code units, sixteen at a time where the processor has SSE2.
namespace codeunits {

#ifdef __SSE2__

inline constexpr qsizetype stride = 16;

/// A bit for each of the sixteen code units at `text` that equals one of `units`.
template<std::same_as<char16_t>... Units>
[[nodiscard]] unsigned matches(const char16_t* text, Units... units) {
    const auto* at = reinterpret_cast<const __m128i*>(text);
    const __m128i first = _mm_loadu_si128(at);
    const __m128i second = _mm_loadu_si128(at + 1);
    const auto equal = [](__m128i vector, char16_t unit) {
        return _mm_cmpeq_epi16(vector, _mm_set1_epi16(static_cast<short>(unit)));
    };
    __m128i inFirst = _mm_setzero_si128();
    __m128i inSecond = _mm_setzero_si128();
    ((inFirst = _mm_or_si128(inFirst, equal(first, units)),
      inSecond = _mm_or_si128(inSecond, equal(second, units))),
     ...);
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(inFirst, inSecond)));
}

#endif

/// Calls `visit(index)` for each code unit at or after `from` that equals one of `units`, in order,
/// until it gives false.
template<typename Visit, std::same_as<char16_t>... Units>
void forEach(QStringView text, qsizetype from, Visit visit, Units... units) {
    const char16_t* const data = text.utf16();
    const qsizetype size = text.size();
    qsizetype index = from;
#ifdef __SSE2__
    for (; index + stride <= size; index += stride) {
        for (unsigned hits = matches(data + index, units...); hits != 0; hits &= hits - 1) {
            if (!visit(index + std::countr_zero(hits))) return;
        }
    }
#endif
    for (; index < size; ++index) {
        if (((data[index] == units) || ...) && !visit(index)) return;
    }
}

/// Index of the first code unit at or after `from` that equals one of `units`, or -1.
template<std::same_as<char16_t>... Units>
[[nodiscard]] qsizetype find(QStringView text, qsizetype from, Units... units) {
    qsizetype found = -1;
    forEach(
        text, from,
        [&found](qsizetype index) {
            found = index;
            return false;
        },
        units...);
    return found;
}

} // namespace codeunits
} // namespace vorq
