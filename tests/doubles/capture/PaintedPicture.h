#pragma once

#include "capture/placement/TintSamples.h"
#include "capture/placement/TintSearch.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vorq {

/// A window's picture to paint on.
class PaintedPicture {
  public:
    static constexpr TintColor paleBlue{.red = 0.70, .green = 0.84, .blue = 0.98};
    static constexpr TintColor white{.red = 1, .green = 1, .blue = 1};

    PaintedPicture(int width, int height, TintColor background = white, int bytesPerPixel = 4,
                   int padding = 0)
        : m_width(width),
          m_height(height),
          m_bytesPerPixel(bytesPerPixel),
          m_bytesPerRow(width * bytesPerPixel + padding),
          m_bytes(static_cast<std::size_t>(m_bytesPerRow) * static_cast<std::size_t>(height)) {
        paint({0, 0, double(width), double(height)}, background);
    }

    void paint(const QRectF& pixels, TintColor color) {
        for (int y = int(pixels.top()); y < int(pixels.bottom()); ++y) {
            for (int x = int(pixels.left()); x < int(pixels.right()); ++x) {
                const auto at = std::size_t(y) * std::size_t(m_bytesPerRow) +
                                std::size_t(x) * std::size_t(m_bytesPerPixel);
                m_bytes[at] = std::uint8_t(std::lround(color.blue * 255));
                m_bytes[at + 1] = std::uint8_t(std::lround(color.green * 255));
                m_bytes[at + 2] = std::uint8_t(std::lround(color.red * 255));
            }
        }
    }

    [[nodiscard]] PixelBuffer buffer() const {
        return {.bytes = m_bytes,
                .width = m_width,
                .height = m_height,
                .bytesPerRow = m_bytesPerRow,
                .bytesPerPixel = m_bytesPerPixel};
    }

    [[nodiscard]] std::optional<TintBox> find(QPointF seed, QSizeF window = {},
                                              std::span<const TintColor> ofDesktop = {}) const {
        if (window.isEmpty()) window = QSizeF(m_width, m_height);
        const TintQuery query{
            .windowSize = window, .search = QRectF(QPointF(), window), .seed = seed};
        return selectionPixelBounds(buffer(), query, selectionTargetColors(ofDesktop));
    }

    [[nodiscard]] std::vector<TintHit> hits(std::int64_t stride = 1) const {
        const SampleArea area{
            .left = 0, .top = 0, .right = m_width, .bottom = m_height, .stride = stride};
        return tintedPixels(buffer(), area, selectionTargetColors({}));
    }

  private:
    int m_width;
    int m_height;
    int m_bytesPerPixel;
    int m_bytesPerRow;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace vorq
