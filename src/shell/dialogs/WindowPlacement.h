#pragma once

#include <QList>
#include <QRect>
#include <QString>

#include <optional>

namespace vorq {

/// Where a window of ours stood, in the toolkit's coordinates.
struct WindowPlace {
    QRect frame; ///< without what the window manager puts around it; as it was before maximised
    bool isMaximised = false;

    bool operator==(const WindowPlace&) const = default;
};

/// As it is stored.
[[nodiscard]] QString encodePlace(const WindowPlace& place);
/// Nothing if the text says no place.
[[nodiscard]] std::optional<WindowPlace> decodePlace(const QString& text);

/// The frame, moved and cut to where it can be reached: most of it and its upper edge on one of the
/// screens, the first of which is the main one.
[[nodiscard]] QRect reachableFrame(const QRect& frame, const QList<QRect>& screens);

/// A frame of that size in the middle of the screen, or as much of it as there is room for.
[[nodiscard]] QRect centredFrame(const QSize& size, const QRect& screen);

/// The frame, moved as little as it takes to stand beside all others on the screen; where there is
/// no such place it stays.
[[nodiscard]] QRect clearOf(const QRect& frame, const QRect& screen, const QList<QRect>& others);

} // namespace vorq
