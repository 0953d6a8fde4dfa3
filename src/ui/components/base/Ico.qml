import QtQuick
import Vorq
import Vorq.Native

// An icon by its name.
IconPainter {
    id: ico

    required name
    property real size: 18
    readonly property real smallSize: 14

    implicitWidth: size
    implicitHeight: size
    color: Theme.ink
    weight: size <= smallSize ? 2.1 : size <= 18 ? 1.85 : 1.7
    Accessible.ignored: true
}
