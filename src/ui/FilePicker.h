#pragma once

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
    /// The panel must outlive the picker.
    explicit FilePicker(PanelViewModel& panel);
    ~FilePicker() override;

    /// The window that the dialog belongs to and stands over, or else it is hidden below a panel
    /// that is above all windows.
    void setOwner(QWindow* owner) { m_owner = owner; }

  signals:
    /// The panel must not take a click in the dialog for one elsewhere.
    void openChanged(bool isOpen);

  private:
    void choose(bool picturesOnly);

    PanelViewModel& m_panel;
    QPointer<QFileDialog> m_dialog;
    QPointer<QWindow> m_owner;
};

} // namespace vorq
