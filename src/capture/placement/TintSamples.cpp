#include "capture/placement/TintSamples.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>

namespace vorq {
namespace {

constexpr double maxDistance = 0.34;
// A square that is beyond it, however numbers are rounded.
constexpr double clearlyFar = 0.116;

/// Tells hits from other pixels. Neighbours mostly have one colour, so the last answer is kept.
class TintTest {
  public:
    explicit TintTest(std::span<const TintColor> colors) : m_colors(colors) {}

    [[nodiscard]] bool isHit(const std::uint8_t* pixel) {
        const std::uint32_t color =
            std::uint32_t{pixel[2]} << 16U | std::uint32_t{pixel[1]} << 8U | pixel[0];
        if (color != m_lastColor) {
            m_lastColor = color;
            m_wasHit = isTinted(
                {.red = pixel[2] / 255.0, .green = pixel[1] / 255.0, .blue = pixel[0] / 255.0});
        }
        return m_wasHit;
    }

  private:
    [[nodiscard]] bool isTinted(TintColor pixel) const {
        const auto [red, green, blue] = pixel;
        const double luma = 0.2126 * red + 0.7152 * green + 0.0722 * blue;
        if (luma < 0.18 || luma > 0.93) return false;
        if (red + 0.05 >= blue || green + 0.02 >= blue || blue <= 0.4) return false;
        return std::ranges::any_of(m_colors, [&](const TintColor& target) {
            const double byRed = red - target.red;
            const double byGreen = green - target.green;
            const double byBlue = blue - target.blue;
            const double squared = byRed * byRed + byGreen * byGreen + byBlue * byBlue;
            // Few pixels come near enough to be worth a root.
            return squared < clearlyFar && std::sqrt(squared) < maxDistance;
        });
    }

    std::span<const TintColor> m_colors;
    // No colour of 24 bits.
    std::uint32_t m_lastColor = ~0U;
    bool m_wasHit = false;
};

// The gate of isTinted() on whole numbers, which are exact: nothing else can be a hit. 0.4, 0.05
// and 0.02 are 102, 12.75 and 5.1 parts of 255.
constexpr int minBlue = 103;
constexpr int minOverRed = 13;
constexpr int minOverGreen = 6;

/// Pixels of four bytes that are looked at in one go.
constexpr std::int64_t chunk = 32;

/// Whether any of the pixels passes the gate. Without a branch, so that it becomes vector code.
template<std::int64_t stride>
bool anyIsBlue(const std::uint8_t* pixels) {
    std::array<std::uint32_t, chunk * stride> values;
    std::memcpy(values.data(), pixels, sizeof(values));
    std::uint32_t any = 0;
    for (std::size_t i = 0; i < values.size(); i += stride) {
        const auto blue = static_cast<int>(values[i] & 0xffU);
        const auto green = static_cast<int>(values[i] >> 8U & 0xffU);
        const auto red = static_cast<int>(values[i] >> 16U & 0xffU);
        // The sign of each difference tells whether its condition fails.
        const int fails =
            (blue - minBlue) | (blue - red - minOverRed) | (blue - green - minOverGreen);
        any |= ~static_cast<std::uint32_t>(fails);
    }
    return any >> 31U != 0;
}

class Sampler {
  public:
    Sampler(const PixelBuffer& image, const SampleArea& area, std::span<const TintColor> colors)
        : m_image(image), m_area(area), m_test(colors) {
        m_hits.reserve(2048);
    }

    [[nodiscard]] std::vector<TintHit> hits() {
        for (std::int64_t y = m_area.top; y < m_area.bottom; y += m_area.stride) {
            if (!sampleRow(y)) break;
        }
        return std::move(m_hits);
    }

  private:
    /// False once there are enough hits.
    bool sampleRow(std::int64_t y) {
        const std::uint8_t* row = m_image.bytes.data() + y * m_image.bytesPerRow;
        std::int64_t x = m_area.left;
        // Most chunks have no blue pixel at all, and the gate is many times as fast as the test.
        const std::int64_t width = chunk * m_area.stride;
        for (; x + width <= m_area.right; x += width) {
            if (mayHaveHits(row, x) && !samplePixels(row, y, x, x + width)) return false;
        }
        return samplePixels(row, y, x, m_area.right);
    }

    [[nodiscard]] bool mayHaveHits(const std::uint8_t* row, std::int64_t x) const {
        if (m_image.bytesPerPixel != 4 || std::endian::native != std::endian::little) return true;
        if (m_area.stride == 1) return anyIsBlue<1>(row + x * 4);
        if (m_area.stride == 2) return anyIsBlue<2>(row + x * 4);
        return true;
    }

    bool samplePixels(const std::uint8_t* row, std::int64_t y, std::int64_t left,
                      std::int64_t right) {
        for (std::int64_t x = left; x < right; x += m_area.stride) {
            const std::uint8_t* pixel = row + x * m_image.bytesPerPixel;
            if (!m_test.isHit(pixel)) continue;
            m_hits.push_back({.x = x, .y = y});
            if (m_hits.size() == maxTintHits) return false;
        }
        return true;
    }

    const PixelBuffer& m_image;
    const SampleArea& m_area;
    TintTest m_test;
    std::vector<TintHit> m_hits;
};

} // namespace

std::vector<TintHit> tintedPixels(const PixelBuffer& image, const SampleArea& area,
                                  std::span<const TintColor> colors) {
    return Sampler(image, area, colors).hits();
}

} // namespace vorq
