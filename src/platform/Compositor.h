#pragma once

#include "platform/PortSupport.h"

#include <QObject>

namespace vorq {

/// What the desktop makes of translucent windows.
enum class Translucency {
    /// Nothing: what is translucent shows black.
    None,
    /// What lies behind shines through as it is.
    Plain,
    /// What lies behind is blurred. Told only where the desktop announces it.
    Blurred,
};

/// Watches how windows are put together on the screen. Main thread only.
class Compositor : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// Whether the desktop tells what it makes of them, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    [[nodiscard]] virtual Translucency translucency() const = 0;

  signals:
    void changed();
};

/// Nobody tells of it, so that windows count as translucent.
class NoCompositor final : public Compositor {
  public:
    [[nodiscard]] PortSupport supported() const override {
        return std::unexpected(
            QStringLiteral("This desktop does not say how it puts windows together."));
    }
    [[nodiscard]] Translucency translucency() const override { return Translucency::Plain; }
};

} // namespace vorq
