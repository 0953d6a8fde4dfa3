#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

namespace vorq {

inline constexpr QSize partWindow{600, 400};

/// The source of a page with the body between the braces of its root, an item of the window's size
/// with the id `root`. It has an integer `presses` and a text `said` to write down what happened.
inline QByteArray partPage(const QString& body) {
    return ("import QtQuick\nimport Vorq\nItem { id: root; width: 600; height: 400\n"
            "property int presses: 0; property string said: ''\n" +
            body + "}")
        .toUtf8();
}

} // namespace vorq
