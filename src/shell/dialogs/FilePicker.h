#pragma once

#include "shell/notices/PanelHold.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QWindow>

class QFileDialog;

namespace vorq {

/// Lets the user choose files for a prompt, or a picture of themselves, in the desktop's own
/// dialog. Needs an application with widgets. Main thread only.
class FilePicker final : public QObject {
    Q_OBJECT

  public:
    /// The panel is held up while a dialog is open, or a click in the dialog would be one
    /// elsewhere. The holds must outlive the picker.
    explicit FilePicker(PanelHolds& holds) : m_holds(holds) {}
    ~FilePicker() override;

    /// The window that the dialog belongs to and stands over, or else it is hidden below a panel
    /// that is above all windows.
    void setOwner(QWindow* owner) { m_owner = owner; }

    /// Opens the dialog; one that is open comes to the front.
    void choose(bool picturesOnly);
    /// The same for one picture.
    void chooseProfilePicture();

    /// Without a choice.
    void close();

  signals:
    void chosen(const QList<QUrl>& files);
    void closed();

  private:
    struct Wish {
        QString title;
        QString types; // of the files, with their patterns
        bool isOne = false;
    };

    void open(const Wish& wish);

    PanelHolds& m_holds;
    PanelHold m_hold;
    QPointer<QFileDialog> m_dialog;
    QPointer<QWindow> m_owner;
};

} // namespace vorq
