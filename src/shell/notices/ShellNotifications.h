#pragma once

#include <QObject>
#include <QString>

namespace vorq {

/// What parts of the program tell each other without knowing each other: whoever wants something
/// emits the signal, whoever can do it is connected. Main thread only.
class ShellNotifications final : public QObject {
    Q_OBJECT

  public:
    using QObject::QObject;

  signals:
    void vorqShowPanel();
    void vorqFocusPrompt();
    void vorqHidePanel();
    void vorqOpenStatusMenu();
    /// A browser sign-in has come back with this code, which no attempt was waiting for.
    void vorqMacHandoffCode(QString code);
    /// The panel needs a signed-in user.
    void vorqGuidePanelAccess();
    void vorqOpenLibrary();
    /// The user wants to see the settings.
    void vorqOpenSettings();
    /// From true to false, a click outside leaves the panel up.
    void vorqSuppressPanelOutsideClose(bool suppress);
    /// The menu of the status item has come up or gone. A bar that draws it need not tell of its
    /// end.
    void vorqStatusMenuChanged(bool isOpen);
    /// Vorq is about to open the menu by itself: nobody has pressed its item.
    void vorqWillOpenStatusMenu();
    /// The panel has begun or ended to be dragged from one dock to another.
    void vorqPanelDockDragChanged(bool isDragging);
    void vorqClearChatGlyphIBeam();
};

} // namespace vorq
