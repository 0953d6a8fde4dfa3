#pragma once

#include "shell/hotkeys/HotKeyTable.h"
#include "shell/look/StatusImage.h"
#include "shell/notices/NoteAdvice.h"
#include "shell/status/StatusCommand.h"

#include <QObject>
#include <QStringList>

#include <set>

namespace vorq {

class VorqAppState;

/// What the menu says of the backend on this computer.
struct BackendAtLoginEntry {
    bool isOffered = false;
    bool isOn = false;
    bool isBusy = false; ///< something is being done about it, so that nothing can be chosen

    bool operator==(const BackendAtLoginEntry&) const = default;
};

/// Vorq's one permanent presence: a glyph among those of the system, with a menu. Main thread only.
class StatusItem : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

    virtual void installStatusItem() = 0;

    /// The menu shows this state from now on; it must outlive the item.
    virtual void bindAppState(VorqAppState& state) = 0;

    /// Lines about hot keys that could not be registered; none if all are.
    virtual void setHotKeyNotices(const QStringList& notices) = 0;

    /// The hot keys that the menu shows beside what they do.
    virtual void setHotKeys(const std::set<HotKeyAction>& registered) = 0;

    /// Whether notes can be made of what is highlighted; the menu has the commands only then.
    virtual void setOffersNotes(bool offersNotes) = 0;

    /// Of the last note key or command.
    virtual void setNoteAdvice(const NoteAdvice& advice) = 0;

    /// At first it is not offered.
    virtual void setBackendAtLogin(const BackendAtLoginEntry& entry) = 0;

    /// What the watch of the application in front does, or why it does nothing; "" while the user
    /// has not opened it.
    virtual void setWatchStatus(const QString& status) = 0;

    /// Why parts of Vorq do not work in this session, a sentence each; none if all work.
    virtual void setSessionLimits(const QStringList& reasons) = 0;

    /// Whether it has its place among those of the system.
    [[nodiscard]] virtual bool isInTray() const = 0;

    virtual void openMenu() = 0;

    /// Shows an image in place of the glyph for a moment.
    virtual void flashStatusImage(StatusImage image) = 0;

    /// Calls for attention until it is stopped, a flash comes or the item leaves the tray.
    virtual void startAttention() = 0;
    virtual void stopAttention() = 0;
    [[nodiscard]] virtual bool isCallingForAttention() const = 0;

    /// Leads the eye to the entry to sign in, once. Nothing if it is not there.
    virtual void chimeSignIn() = 0;

    /// Whether the user wants nothing to move. At first they do not mind.
    virtual void setReducesMotion(bool reducesMotion) = 0;

  signals:
    void menuWillOpen();
    void menuDidClose();

    /// The user has chosen it in the menu.
    void chosen(vorq::StatusCommand command);

    // The user is choosing a colour of the panel, and has done so.
    void colorEditBegan();
    void colorEditEnded();
};

} // namespace vorq
