#pragma once

#include "platform/PortSupport.h"
#include "platform/ProcessId.h"
#include "platform/WindowId.h"

#include <QRectF>
#include <QString>

#include <cstdint>
#include <expected>
#include <memory>
#include <span>
#include <stop_token>
#include <vector>

namespace vorq {

/// A window on the screen that a picture can be taken of.
struct CapturableWindow {
    WindowId window = 0;
    ProcessId process = 0;
    /// In accessibility coordinates: points, origin at the top left of the primary screen, y
    /// downwards.
    QRectF frame;

    bool operator==(const CapturableWindow&) const = default;
};

/// A picture of a window: rows from the top, of pixels whose first three bytes are blue, green,
/// red. Those of a screen with several pixels to a point are all there.
struct WindowPicture {
    std::span<const std::uint8_t> bytes;
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t bytesPerRow = 0;
    std::int64_t bytesPerPixel = 4;
    /// Keeps the bytes.
    std::shared_ptr<const void> memory;
};

/// Pictures of other programs' windows, without what covers them. They stay in memory.
///
/// Each call blocks until the window system has answered; the stop token spares it the questions
/// that it has not asked yet. For one thread at a time, not the main one. An error is a sentence.
class ScreenCapture {
  public:
    ScreenCapture() = default;
    ScreenCapture(const ScreenCapture&) = delete;
    ScreenCapture& operator=(const ScreenCapture&) = delete;
    virtual ~ScreenCapture() = default;

    /// Whether pictures can be taken in this session, and why not. Any thread; never waits.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// The windows that are on the screen, the uppermost first, Vorq's own as well.
    [[nodiscard]] virtual std::expected<std::vector<CapturableWindow>, QString>
    windowsOnScreen(std::stop_token stop) = 0;

    /// The contents of a window, without the frame that a window manager draws.
    [[nodiscard]] virtual std::expected<WindowPicture, QString> pictureOf(WindowId window,
                                                                          std::stop_token stop) = 0;
};

/// A session where no pictures are taken.
class NoScreenCapture final : public ScreenCapture {
  public:
    explicit NoScreenCapture(QString reason) : m_reason(std::move(reason)) {}

    [[nodiscard]] PortSupport supported() const override { return std::unexpected(m_reason); }
    [[nodiscard]] std::expected<std::vector<CapturableWindow>, QString>
    windowsOnScreen(std::stop_token /*stop*/) override {
        return std::unexpected(m_reason);
    }
    [[nodiscard]] std::expected<WindowPicture, QString>
    pictureOf(WindowId /*window*/, std::stop_token /*stop*/) override {
        return std::unexpected(m_reason);
    }

  private:
    QString m_reason;
};

} // namespace vorq
