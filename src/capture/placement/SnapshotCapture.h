#pragma once

#include "capture/placement/SelectionSnapshot.h"
#include "capture/selection/SelectionReader.h"
#include "platform/ProcessId.h"

#include <QCoroTask>
#include <QObject>

#include <optional>
#include <stop_token>

namespace vorq {

class CaptureGate;
class CaptureLog;
class CopyShortcut;
class HighlightSearch;
class Screens;

/// Captures a selection together with its place on the screen: by accessibility, else what is
/// highlighted or copied, with the place that is known then, else seen on a picture of the window,
/// else that of the mouse. Main thread only; other programs are waited for on threads of their own.
class SnapshotCapture final : public QObject {
    Q_OBJECT

  public:
    struct Services {
        SelectionReader& reader;
        const CaptureGate& gate;
        CopyShortcut& copyShortcut;
        HighlightSearch& search;
        const Screens& screens;
        CaptureLog& log;
    };

    /// The services must outlive this object.
    explicit SnapshotCapture(const Services& services) : m_services(services) {}

    /// Without a mouse point, where the mouse is. The text is "" where nothing is captured.
    ///
    /// It ends whatever the application does: the first questions have CaptureBudget::captureLimit,
    /// those after a copy and those for a picture CaptureBudget::accessibilityLimit each, and the
    /// picture WindowHighlightSearch::pictureLimit; a copy has limits of its own. Once stopped, it
    /// ends at once with what it has.
    QCoro::Task<SelectionSnapshot> captureSelection(std::optional<ProcessId> source,
                                                    std::optional<QPointF> mousePoint,
                                                    bool useScreenGeometry, std::stop_token stop);

  private:
    // A capture under way.
    struct Aim {
        std::optional<ProcessId> source;
        QPointF mouse;
        bool useScreenGeometry = false;
    };

    QCoro::Task<SelectionSnapshot> captureByCopy(Aim aim, QString highlighted,
                                                 std::stop_token stop);
    QCoro::Task<SelectionSnapshot> placeBySight(Aim aim, SelectionSnapshot snapshot,
                                                std::stop_token stop);
    [[nodiscard]] std::optional<SelectionSnapshot>
    snapshotAfterCopy(const SelectionReading& reading, const QString& copied, const Aim& aim) const;

    Services m_services;
};

} // namespace vorq
