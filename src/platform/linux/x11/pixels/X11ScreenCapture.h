#pragma once

#include "platform/linux/x11/PixelScreens.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/pixels/ScreenCapture.h"

#include <mutex>

namespace vorq {

/// Windows of an X server, on a connection that is made for the first picture.
class X11ScreenCapture final : public ScreenCapture {
  public:
    /// The monitors as they are from now on, for places in points. For any thread.
    void setScreens(std::vector<PixelScreen> screens);

    [[nodiscard]] std::expected<std::vector<CapturableWindow>, QString>
    windowsOnScreen(std::stop_token stop) override;
    [[nodiscard]] std::expected<WindowPicture, QString> pictureOf(WindowId window,
                                                                  std::stop_token stop) override;

  private:
    [[nodiscard]] bool isConnected();

    std::mutex m_mutex;
    std::vector<PixelScreen> m_screens;
    std::unique_ptr<X11Connection> m_x11; // of the thread of the captures
};

} // namespace vorq
