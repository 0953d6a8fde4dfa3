#pragma once

#include "platform/Clock.h"
#include "platform/ProcessId.h"
#include "support/async/TaskSlot.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

namespace vorq {

class DesktopCapture;
class DesktopPlatform;
class HotKeyHandler;
class VorqAppState;

/// The writing tools on the user's desktop: their key and their card, while their preview is open.
/// Needs a QApplication. Main thread only.
class DesktopWriting final : public QObject {
    Q_OBJECT

  public:
    /// After the preview is opened, until the card is made, so that the launch does not wait for
    /// it. Whoever asks for it before gets it at once.
    static constexpr Clock::Duration delay = std::chrono::milliseconds(600);

    /// All must outlive this object.
    struct Parts {
        DesktopPlatform& platform;
        DesktopCapture& capture;
        VorqAppState& state;
        HotKeyHandler& hotKeys;
        std::function<void()> showPanel;
        /// Shows that a command came to nothing.
        std::function<void()> fail;
    };

    explicit DesktopWriting(const Parts& parts);
    ~DesktopWriting() override;

    /// The key, or the command: opens the card over what is highlighted in the application.
    void rewrite(std::optional<ProcessId> source);

  private:
    class Tools;

    void applySwitch();
    Tools& tools();
    void sendToPanel(const QString& text, std::optional<ProcessId> source);
    void forgetTimer();

    Parts m_parts;
    std::unique_ptr<Tools> m_tools; // null while they are not made
    std::optional<Clock::TimerId> m_timer;
    TaskSlot m_sending;
};

} // namespace vorq
