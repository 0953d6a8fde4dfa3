#pragma once

#include "capture/placement/HighlightSearch.h"
#include "capture/selection/CaptureThread.h"
#include "platform/Clock.h"

#include <QObject>

#include <chrono>

namespace vorq {

class CaptureLog;
class DesktopAppearance;
class ScreenCapture;
class Screens;
class SelectionReader;

/// Looks for a selection on a picture of its window: where the element that has the focus is, in
/// the whole window of an application that tells nothing, by the tints that the desktop and
/// programs set behind selected text. Main thread only; what waits for other programs or the window
/// system is on threads of its own.
class WindowHighlightSearch final : public QObject, public HighlightSearch {
    Q_OBJECT

  public:
    /// For the picture of a window and the search on it.
    static constexpr std::chrono::milliseconds pictureLimit{1000};

    struct Services {
        Clock& clock;
        SelectionReader& reader;
        ScreenCapture& capture;
        const Screens& screens;
        const DesktopAppearance& appearance;
        CaptureLog& log;
    };

    /// The services must outlive this object and whatever it has under way.
    explicit WindowHighlightSearch(const Services& services);

    QCoro::Task<std::optional<VisualHighlight>>
    highlightPlacementFromScreenshot(std::optional<ProcessId> source, QPointF mouse,
                                     std::stop_token stop) override;

  private:
    Services m_services;
    CaptureThread m_thread;
};

} // namespace vorq
