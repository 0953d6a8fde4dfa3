#pragma once

#include "platform/pixels/ScreenCapture.h"

#include <QHash>

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace vorq {

/// Windows and pictures of a test.
class ScriptedScreenCapture final : public ScreenCapture {
  public:
    PortSupport support;
    std::expected<std::vector<CapturableWindow>, QString> windows;
    /// By window; others are gone.
    QHash<WindowId, WindowPicture> pictures;
    std::vector<WindowId> captured;
    /// While set, a picture comes back only when its token is stopped.
    std::atomic<bool> hangs = false;
    /// How many wait for that.
    std::atomic<int> hanging = 0;

    [[nodiscard]] PortSupport supported() const override { return support; }
    [[nodiscard]] std::expected<std::vector<CapturableWindow>, QString>
    windowsOnScreen(std::stop_token /*stop*/) override {
        return windows;
    }
    [[nodiscard]] std::expected<WindowPicture, QString> pictureOf(WindowId window,
                                                                  std::stop_token stop) override {
        captured.push_back(window);
        if (hangs) hang(stop);
        const auto found = pictures.constFind(window);
        if (found == pictures.constEnd())
            return std::unexpected(QStringLiteral("The window is gone."));
        return *found;
    }

  private:
    void hang(const std::stop_token& stop) {
        std::mutex mutex;
        std::condition_variable_any never;
        std::unique_lock lock(mutex);
        ++hanging;
        never.wait(lock, stop, [] { return false; });
        --hanging;
    }
};

} // namespace vorq
