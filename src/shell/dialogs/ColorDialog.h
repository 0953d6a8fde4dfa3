#pragma once

#include <QColor>
#include <QColorDialog>
#include <QObject>
#include <QPointer>
#include <QString>

namespace vorq {

/// The desktop's own dialog for a colour. Needs an application with widgets. Main thread only.
class ColorDialog : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString title MEMBER m_title NOTIFY titleChanged)

  public:
    explicit ColorDialog(QObject* parent = nullptr);
    ~ColorDialog() override;

    /// Shows the dialog, with a colour chosen; raises it if it is open already.
    Q_INVOKABLE void open(const QColor& current);

    [[nodiscard]] bool isOpen() const { return m_dialog && m_dialog->isVisible(); }

  signals:
    void titleChanged();

    /// Another colour is chosen, for now: the dialog is still open.
    void previewed(const QColor& color);

    void accepted(const QColor& color);
    void rejected();

  private:
    QString m_title;
    QPointer<QColorDialog> m_dialog;
};

} // namespace vorq
