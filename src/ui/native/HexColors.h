#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace vorq {

/// What the user enters into a row for a colour.
struct HexEntry {
    Q_GADGET
    QML_VALUE_TYPE(hexEntry)
    Q_PROPERTY(bool valid MEMBER valid)
    /// What is stored; "" for the theme's own colour.
    Q_PROPERTY(QString hex MEMBER hex)

  public:
    bool valid = false;
    QString hex;
};

/// The rules of hex colours for pages. Pure functions.
class HexColors : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    using QObject::QObject;

    /// What becomes of a draft when it is committed.
    Q_INVOKABLE [[nodiscard]] static vorq::HexEntry commit(const QString& draft);

    /// Invalid for a text that is no colour.
    Q_INVOKABLE [[nodiscard]] static QColor color(const QString& hex);

    /// Whether text in the foreground that the colour gets is hard to read on it.
    Q_INVOKABLE [[nodiscard]] static bool isLowContrast(const QString& hex);

    /// The colour, or as little of the way towards the strongest as makes it readable on the
    /// ground.
    Q_INVOKABLE [[nodiscard]] static QColor readable(const QColor& color, const QColor& ground,
                                                     const QColor& strongest);

    Q_INVOKABLE [[nodiscard]] static QString hexOf(const QColor& color);
};

} // namespace vorq
