#pragma once

#include "shell/window/PanelHold.h"

#include <QObject>
#include <QPointer>
#include <QWindow>

class QFileDialog;

namespace vorq {

class PanelViewModel;

/// Lets the user choose files for a prompt in the desktop's own dialog. Needs an application with
/// widgets. Main thread only.
class FilePicker final : public QObject {
    Q_OBJECT

  public:
    /// The panel must outlive the picker. It is held up while a dialog is open, or a click in the
    /// dialog would be one elsewhere.
    FilePicker(PanelViewModel& panel, PanelHolds& holds);
    ~FilePicker() override;

    /// The window that the dialog belongs to and stands over, or else it is hidden below a panel
    /// that is above all windows.
    void setOwner(QWindow* owner) { m_owner = owner; }

    /// Without a choice.
    void close();

  signals:
    void closed();

  private:
    void choose(bool picturesOnly);

    PanelViewModel& m_panel;
    PanelHolds& m_holds;
    PanelHold m_hold;
    QPointer<QFileDialog> m_dialog;
    QPointer<QWindow> m_owner;
};

} // namespace vorq
