#pragma once

#include "platform/PortSupport.h"

#include <QObject>

namespace vorq {

/// Watches whether the desktop has a tray for status items. Main thread only.
class TrayHost : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// Whether there is one now, of whatever kind, and why not.
    [[nodiscard]] virtual PortSupport supported() const = 0;

  signals:
    /// One has come.
    void arrived();
};

/// There is none and never will be.
class NoTrayHost final : public TrayHost {
  public:
    [[nodiscard]] PortSupport supported() const override {
        return std::unexpected(QStringLiteral("This desktop has no tray."));
    }
};

} // namespace vorq
