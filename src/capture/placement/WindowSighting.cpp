#include "capture/placement/WindowSighting.h"

#include "capture/selection/CaptureLog.h"
#include "platform/pixels/ScreenCapture.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr double smallestSearchArea = 40;
constexpr double narrowestTint = 8;
constexpr double lowestTint = 6;

double areaOf(const CapturableWindow& window) {
    return window.frame.width() * window.frame.height();
}

std::optional<CapturableWindow> targetOf(const std::vector<CapturableWindow>& windows,
                                         const SightingQuery& query) {
    std::optional<CapturableWindow> target;
    for (const CapturableWindow& window : windows) {
        if (window.process == query.own) continue;
        if (query.source && window.process != *query.source) continue;
        if (!target || areaOf(window) > areaOf(*target)) target = window;
    }
    return target;
}

// The smallest rectangle of whole numbers around it.
QRectF integral(const QRectF& rect) {
    return {QPointF(std::floor(rect.left()), std::floor(rect.top())),
            QPointF(std::ceil(rect.right()), std::ceil(rect.bottom()))};
}

class WindowSearch {
  public:
    WindowSearch(const SightingQuery& query, const CapturableWindow& window,
                 const WindowPicture& picture)
        : m_query(query),
          m_window(window.frame),
          m_picture{.bytes = picture.bytes,
                    .width = picture.width,
                    .height = picture.height,
                    .bytesPerRow = picture.bytesPerRow,
                    .bytesPerPixel = picture.bytesPerPixel},
          m_seed(pointAX(query.mouse, query.screens) - window.frame.topLeft()) {}

    [[nodiscard]] Sighting search() {
        const QRectF whole({0, 0}, m_window.size());
        const QRectF area = m_query.searchArea.value_or(m_window);
        const QRectF asked = integral(area.translated(-m_window.topLeft()));
        const QRectF clipped = asked.intersected(whole);
        auto box = boxWithin(clipped.isEmpty() ? whole : clipped);
        if (!box) box = boxWithin(whole);
        if (!box) {
            log(u"shot: no selection tint in window=%1 search=%2 mouseLocal=%3"_s.arg(
                logged(m_window), logged(asked), logged(m_seed)));
            return m_sighting;
        }
        accept(box->translated(m_window.topLeft()));
        return m_sighting;
    }

  private:
    [[nodiscard]] std::optional<TintBox> find(const QRectF& area,
                                              std::optional<double> reach = std::nullopt) const {
        const TintQuery query{
            .windowSize = m_window.size(), .search = area, .seed = m_seed, .reach = reach};
        return selectionPixelBounds(m_picture, query, m_query.colors);
    }

    // The same box that the whole area gives as long as not all hits of that are too many.
    [[nodiscard]] std::optional<TintBox> findNear(const QRectF& area) const {
        for (const double radius : tintRadii) {
            const auto found = find(area, radius);
            if (found && found->radius && *found->radius <= radius) return found;
        }
        return std::nullopt;
    }

    [[nodiscard]] std::optional<QRectF> boxWithin(const QRectF& area) {
        auto found = findNear(area);
        if (!found) found = find(area);
        if (!found) return std::nullopt;
        if (found->radius) {
            log(u"shot: blob hits=%1/%2 r=%3 box=%4"_s.arg(found->hits)
                    .arg(found->allHits)
                    .arg(static_cast<int>(*found->radius))
                    .arg(logged(found->frame)));
        } else {
            log(u"shot: band fallback box=%1"_s.arg(logged(found->frame)));
        }
        return found->frame;
    }

    void accept(const QRectF& tintAX) {
        const QRectF tint = cocoaRect(tintAX, m_query.screens);
        if (tint.width() < narrowestTint || tint.height() < lowestTint) {
            log(u"shot: tint box too small %1"_s.arg(logged(tint)));
            return;
        }
        log(u"shot: tintAX=%1 cocoa=%2 window=%3"_s.arg(logged(tintAX), logged(tint),
                                                        logged(m_window)));
        m_sighting.highlight = VisualHighlight{
            .screenFrame = QRectF(tint.topLeft(), QSizeF(tint.width(), stripHeight(tint))),
            .clickPoint = tint.center()};
    }

    void log(const QString& line) { m_sighting.log += line; }

    const SightingQuery& m_query;
    QRectF m_window;
    PixelBuffer m_picture;
    QPointF m_seed; // of the window
    Sighting m_sighting;
};

Sighting failure(const QString& line) {
    return {.highlight = std::nullopt, .log = {line}};
}

} // namespace

bool isSearchArea(const QRectF& area) {
    return area.width() >= smallestSearchArea && area.height() >= smallestSearchArea;
}

QString noSearchArea(const std::optional<QRectF>& area) {
    return u"shot: no search area (searchAX=%1)"_s.arg(area ? logged(*area) : u"nil"_s);
}

Sighting sightSelection(ScreenCapture& capture, const SightingQuery& query,
                        const std::stop_token& stop) {
    const auto windows = capture.windowsOnScreen(stop);
    if (stop.stop_requested()) return {};
    if (!windows) return failure(u"shot: SCShareableContent failed %1"_s.arg(windows.error()));
    const auto target = targetOf(*windows, query);
    if (!query.searchArea && (!target || !isSearchArea(target->frame)))
        return failure(noSearchArea(target ? std::optional(target->frame) : std::nullopt));
    if (!target)
        return failure(u"shot: no target window for pid=%1"_s.arg(query.source.value_or(-1)));
    const auto picture = capture.pictureOf(target->window, stop);
    if (stop.stop_requested()) return {};
    if (!picture) return failure(u"shot: captureImage failed %1"_s.arg(picture.error()));
    return WindowSearch(query, *target, *picture).search();
}

} // namespace vorq
