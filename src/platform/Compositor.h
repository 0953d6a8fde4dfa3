#pragma once

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

    [[nodiscard]] virtual Translucency translucency() const = 0;

  signals:
    void changed();
};

} // namespace vorq
