#pragma once

#include "platform/PortSupport.h"
#include "platform/ProcessId.h"
#include "platform/WindowId.h"
#include "platform/pixels/ScreenCapture.h"

#include <QObject>
#include <QRectF>

#include <optional>

namespace vorq {

/// The window that a stream shows. Without a number, or if that is gone, it is the largest one of
/// the process.
struct StreamedWindow {
    ProcessId process = 0;
    std::optional<WindowId> window;

    bool operator==(const StreamedWindow&) const = default;
};

/// A picture of a window and where the window was, in accessibility coordinates.
struct WindowFrame {
    WindowPicture picture;
    QRectF place;
};

/// Pictures of one window of another program, again and again at a low rate. They stay in memory.
/// Main thread only; nothing here waits for the window system.
class FrameStream : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// Whether windows can be seen in this session, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Shows this window in place of the one before, the first picture at once.
    virtual void start(const StreamedWindow& window) = 0;

    /// Nothing comes any more, not even what was under way.
    virtual void stop() = 0;

  signals:
    void frameArrived(const vorq::WindowFrame& frame);

    /// It has stopped by itself, as when the window is gone. The description is a sentence.
    void stopped(const QString& description);
};

/// A session that shows no windows.
class NoFrameStream final : public FrameStream {
    Q_OBJECT

  public:
    explicit NoFrameStream(QString reason) : m_reason(std::move(reason)) {}

    [[nodiscard]] PortSupport supported() const override { return std::unexpected(m_reason); }
    void start(const StreamedWindow& /*window*/) override {}
    void stop() override {}

  private:
    QString m_reason;
};

} // namespace vorq
