#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QTextDocument>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// Keeps so much distance between the lines of a text being edited, without a trace in its undo
/// steps. Main thread only.
class TextLeading : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument* document READ document WRITE setDocument NOTIFY documentChanged)
    /// In logical pixels.
    Q_PROPERTY(double leading READ leading WRITE setLeading NOTIFY leadingChanged)

  public:
    using QObject::QObject;

    [[nodiscard]] QQuickTextDocument* document() const { return m_document; }
    void setDocument(QQuickTextDocument* document);
    [[nodiscard]] double leading() const { return m_leading; }
    void setLeading(double leading);

  signals:
    void documentChanged();
    void leadingChanged();

  private:
    void apply();

    QPointer<QQuickTextDocument> m_document;
    double m_leading = 0;
    bool m_isApplying = false;
};

} // namespace vorq
