#pragma once

#include "platform/pixels/FrameStream.h"

#include <vector>

namespace vorq {

/// A stream whose pictures come by hand.
class ScriptedFrameStream final : public FrameStream {
    Q_OBJECT

  public:
    PortSupport support;
    /// What it was started with, in order.
    std::vector<StreamedWindow> starts;

    /// Nothing while it is stopped.
    [[nodiscard]] const std::optional<StreamedWindow>& shown() const { return m_shown; }

    /// A picture of one pixel arrives, also where the stream is stopped, as one that was under way.
    void deliver(std::uint8_t blue) {
        const auto bytes = std::make_shared<std::vector<std::uint8_t>>(4, blue);
        emit frameArrived(
            {.picture =
                 {.bytes = *bytes, .width = 1, .height = 1, .bytesPerRow = 4, .memory = bytes},
             .place = QRectF(10, 20, 1, 1)});
    }
    void fail(const QString& description) {
        m_shown.reset();
        emit stopped(description);
    }

    [[nodiscard]] PortSupport supported() const override { return support; }
    void start(const StreamedWindow& window) override {
        starts.push_back(window);
        m_shown = window;
    }
    void stop() override { m_shown.reset(); }

  private:
    std::optional<StreamedWindow> m_shown;
};

} // namespace vorq
