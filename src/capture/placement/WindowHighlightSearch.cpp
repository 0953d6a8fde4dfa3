#include "capture/placement/WindowHighlightSearch.h"

#include "capture/placement/WindowSighting.h"
#include "capture/selection/CaptureLog.h"
#include "capture/selection/SelectionReader.h"
#include "platform/DesktopLook.h"
#include "platform/pixels/ScreenCapture.h"

#include <QCoreApplication>
#include <QPointer>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

std::vector<TintColor> colorsOf(const DesktopLook& look) {
    std::vector<TintColor> ofDesktop;
    for (const auto& color : {look.selection, look.accent})
        if (color)
            ofDesktop.push_back({.red = color->red, .green = color->green, .blue = color->blue});
    return selectionTargetColors(ofDesktop);
}

void askForFocusedFrame(const CaptureSource& from, SelectionReading& reading) {
    reading.focusedFrame = focusedAXFrame(from);
}

} // namespace

WindowHighlightSearch::WindowHighlightSearch(const Services& services)
    : m_services(services), m_thread(services.clock) {}

QCoro::Task<std::optional<VisualHighlight>>
WindowHighlightSearch::highlightPlacementFromScreenshot(std::optional<ProcessId> source,
                                                        QPointF mouse, std::stop_token stop) {
    const QPointer<WindowHighlightSearch> self(this);
    if (!m_services.capture.supported()) {
        m_services.log.placeDbg(u"shot: BLOCKED — Screen Recording not granted for this binary"_s);
        co_return std::nullopt;
    }
    const SelectionReading reading = co_await m_services.reader.readAccessibility(
        source, askForFocusedFrame, CaptureBudget::accessibilityLimit, stop);
    if (!self || stop.stop_requested()) co_return std::nullopt;
    const std::optional<QRectF>& area = reading.focusedFrame;
    if (area && !isSearchArea(*area)) {
        m_services.log.placeDbg(noSearchArea(area));
        co_return std::nullopt;
    }
    const SightingQuery query{.source = source,
                              .own = static_cast<ProcessId>(QCoreApplication::applicationPid()),
                              .searchArea = area,
                              .mouse = mouse,
                              .screens = screenLayout(m_services.screens),
                              .colors = colorsOf(m_services.appearance.look())};
    const auto sighting = std::make_shared<Sighting>();
    ScreenCapture& capture = m_services.capture;
    CaptureThread::Job job = [&capture, query, sighting](const std::stop_token& running) {
        *sighting = sightSelection(capture, query, running);
    };
    const bool isInTime = co_await m_thread.run(std::move(job), pictureLimit, stop);
    if (!self || stop.stop_requested()) co_return std::nullopt;
    // Until it has come to its end, what it found belongs to the other thread.
    if (!isInTime) {
        m_services.log.placeDbg(
            u"shot: captureImage failed The window system does not answer in time."_s);
        co_return std::nullopt;
    }
    for (const QString& line : std::as_const(sighting->log))
        m_services.log.placeDbg(line);
    const auto highlight = sighting->highlight;
    co_return highlight;
}

} // namespace vorq
