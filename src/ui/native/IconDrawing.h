#pragma once

#include <QString>

namespace vorq {

/// An icon as SVG: its strokes and fills in "currentColor", and a stroke width of 1.75 for whatever
/// sets none of its own.
struct IconDrawing {
    QString drawn;
    /// What is taken away from it again; "" for nothing.
    QString cutOut;

    /// The drawing of src/ui/icons/NAME.svg, where elements with white strokes are what is cut out.
    /// Read once; a name without a file gives the icon "square". Main thread, or while it waits.
    [[nodiscard]] static IconDrawing of(const QString& name);
};

} // namespace vorq
