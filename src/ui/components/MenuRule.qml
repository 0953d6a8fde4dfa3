import QtQuick
import QtQuick.Templates as T
import Vorq

// A line between the choices of a `Menu`.
T.MenuSeparator {
    id: rule

    readonly property int sideRoom: 8

    implicitHeight: 11
    implicitWidth: 2 * sideRoom
    Accessible.role: Accessible.Separator

    contentItem: Item {
        Rectangle {
            x: rule.sideRoom
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 2 * rule.sideRoom
            height: 1
            color: Theme.hairline2
        }
    }
}
