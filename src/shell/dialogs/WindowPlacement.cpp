#include "shell/dialogs/WindowPlacement.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int numbers = 4;
constexpr int windowGap = 16;
constexpr int farthest = 100'000; // more is no screen, and would overflow

int area(const QRect& rect) {
    return rect.isEmpty() ? 0 : rect.width() * rect.height();
}

bool isClear(const QRect& frame, const QList<QRect>& others) {
    return std::ranges::none_of(others,
                                [&frame](const QRect& other) { return frame.intersects(other); });
}

int distance(const QRect& from, const QRect& to) {
    return (to.topLeft() - from.topLeft()).manhattanLength();
}

} // namespace

QString encodePlace(const WindowPlace& place) {
    const QRect& frame = place.frame;
    return u"%1 %2 %3 %4%5"_s.arg(frame.x())
        .arg(frame.y())
        .arg(frame.width())
        .arg(frame.height())
        .arg(place.isMaximised ? u" max"_s : QString());
}

std::optional<WindowPlace> decodePlace(const QString& text) {
    const QStringList words = text.split(u' ');
    const bool isMaximised = words.size() == numbers + 1 && words.back() == u"max";
    if (words.size() != numbers && !isMaximised) return std::nullopt;
    std::array<int, numbers> values{};
    for (int index = 0; index < numbers; ++index) {
        bool isNumber = false;
        values[static_cast<std::size_t>(index)] = words[index].toInt(&isNumber);
        if (!isNumber || std::abs(values[static_cast<std::size_t>(index)]) > farthest)
            return std::nullopt;
    }
    const QRect frame(values[0], values[1], values[2], values[3]);
    if (frame.isEmpty()) return std::nullopt;
    return WindowPlace{frame, isMaximised};
}

QRect reachableFrame(const QRect& frame, const QList<QRect>& screens) {
    if (screens.isEmpty()) return frame;
    const auto best = std::ranges::max_element(
        screens, {}, [&frame](const QRect& screen) { return area(screen & frame); });
    const QRect& screen = *best;
    const QSize size = frame.size().boundedTo(screen.size());
    const int x = std::clamp(frame.x(), screen.x(), screen.x() + screen.width() - size.width());
    const int y = std::clamp(frame.y(), screen.y(), screen.y() + screen.height() - size.height());
    return {QPoint(x, y), size};
}

QRect centredFrame(const QSize& size, const QRect& screen) {
    QRect frame(QPoint(), size.boundedTo(screen.size()));
    frame.moveCenter(screen.center());
    return frame;
}

QRect clearOf(const QRect& frame, const QRect& screen, const QList<QRect>& others) {
    QList<QRect> places{frame};
    for (const QRect& other : others) {
        places += frame.translated(other.x() - frame.x() - frame.width() - windowGap, 0);
        places += frame.translated(other.x() + other.width() + windowGap - frame.x(), 0);
        places += frame.translated(0, other.y() - frame.y() - frame.height() - windowGap);
        places += frame.translated(0, other.y() + other.height() + windowGap - frame.y());
    }
    places.removeIf(
        [&](const QRect& place) { return !screen.contains(place) || !isClear(place, others); });
    const auto nearest = std::ranges::min_element(
        places, {}, [&frame](const QRect& place) { return distance(frame, place); });
    return nearest == places.end() ? frame : *nearest;
}

} // namespace vorq
