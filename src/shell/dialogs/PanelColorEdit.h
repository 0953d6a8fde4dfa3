#pragma once

#include "shell/dialogs/ColorDialog.h"

#include <QColor>
#include <QObject>
#include <QString>

#include <functional>

namespace vorq {

/// Has the user choose one of the panel's own colours, which the panel shows while it is being
/// chosen and which is stored once it is. Without a choice the former one comes back. Needs a
/// QApplication. Main thread only.
class PanelColorEdit final : public QObject {
    Q_OBJECT

  public:
    /// The colour as a hex string; "" is the theme's own.
    struct Setting {
        std::function<QString()> read;
        std::function<void(const QString& hex)> preview;
        std::function<void(const QString& hex)> write;
    };

    PanelColorEdit(const QString& title, Setting setting, QObject* parent = nullptr);

    /// Opens the dialog at the colour that is set, or at the theme's own.
    void open(const QColor& ownColor);

  signals:
    void began();
    void ended();

  private:
    void accept(const QColor& color);
    void reject();

    Setting m_setting;
    QString m_former;
    QString m_shown;
    ColorDialog m_dialog;
};

} // namespace vorq
