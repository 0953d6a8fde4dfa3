import QtQuick
import Vorq

// A control with a word about what of it is shown.
Column {
    id: cell

    required property string name
    default property alias control: holder.data

    spacing: Theme.space2

    Txt {
        width: parent.width
        text: cell.name
        size: Theme.captionSize
        color: Theme.ink3
        elide: Text.ElideRight
    }
    Item {
        id: holder
        width: parent.width
        height: childrenRect.height
    }
}
