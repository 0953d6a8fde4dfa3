#pragma once

#include "capture/selection/CapturedText.h"
#include "platform/ProcessId.h"

#include <QCoroTask>
#include <QObject>

#include <optional>
#include <stop_token>

namespace vorq {

class CaptureGate;
class CopyShortcut;
class SelectionReader;

/// What the note keys capture: whatever element has a selection, else what is highlighted, as often
/// as it is asked for; and the copy shortcut beside it, except of a file manager whose selection
/// is files. The longer of both texts counts. Main thread only.
///
/// Where a field for passwords has the focus, nothing is captured, by no way. A text that
/// accessibility has not told is held back if it reads like a secret, and, of what shows web pages,
/// if it may be a password and the page does not copy it.
class NoteCapture final : public QObject {
    Q_OBJECT

  public:
    struct Services {
        SelectionReader& reader;
        const CaptureGate& gate;
        CopyShortcut& copyShortcut;
    };

    /// The services must outlive this object.
    explicit NoteCapture(const Services& services) : m_services(services) {}

    QCoro::Task<CapturedText> captureSelectedTextForNoteSave(std::optional<ProcessId> source,
                                                             std::stop_token stop);

  private:
    Services m_services;
};

} // namespace vorq
