#pragma once

#include "platform/PortSupport.h"
#include "platform/WindowId.h"

#include <QObject>
#include <QPointF>
#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

namespace vorq {

/// One monitor. Rectangles are in points and screen coordinates, see Screens.
struct Screen {
    QString name;
    QRectF frame;
    /// What bars and docks leave free.
    QRectF visibleFrame;
    /// Pixels to a point.
    double scale = 1;

    bool operator==(const Screen&) const = default;
};

/// The monitors, and where on them the pointer and other programs' windows are. Main thread only.
///
/// Geometry is in points and screen coordinates: the origin is at the lower left of the primary
/// screen and y grows upwards, so that the top() of a QRectF is its lower edge.
class Screens : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    /// Whether pointer and windows are told of wherever they are, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// The primary screen first. Empty while no monitor is there.
    [[nodiscard]] virtual std::vector<Screen> screens() const = 0;

    [[nodiscard]] virtual QPointF pointer() const = 0;

    /// Where a window of any program stands. Nothing if it is gone, minimised or on another
    /// workspace.
    [[nodiscard]] virtual std::optional<QRectF> windowFrame(WindowId window) const = 0;

    /// The first screen that holds the point, else the fallback, else the primary one. Nothing
    /// without a screen.
    [[nodiscard]] std::optional<Screen> screen(QPointF containing,
                                               std::optional<Screen> fallback = {}) const;

    /// The screen that holds the point or is the nearest to it. Nothing without a screen.
    [[nodiscard]] std::optional<Screen> nearestScreen(QPointF point) const;

    /// From screen coordinates to those of the window system, whose origin is at the upper left and
    /// whose y grows downwards, and back again.
    [[nodiscard]] QPointF flipped(QPointF point) const;
    [[nodiscard]] QRectF flipped(const QRectF& rect) const;

  signals:
    /// A screen has come, gone, moved, or has more or less room.
    void changed();

  protected:
    /// The lower edge of the primary screen, in the coordinates of the window system.
    [[nodiscard]] virtual double baseline() const = 0;
};

} // namespace vorq
