import QtQuick
import Vorq

Flow {
    id: page

    property list<string> names: []

    spacing: 6

    Repeater {
        model: page.names

        Column {
            id: entry

            required property string modelData

            width: 86
            spacing: 4

            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 6
                Ico { name: entry.modelData; size: 14; anchors.verticalCenter: parent.verticalCenter }
                Ico { name: entry.modelData; size: 24 }
            }
            Txt {
                width: parent.width
                text: entry.modelData
                size: 10
                color: Theme.ink3
                horizontalAlignment: Text.AlignHCenter
                elide: Text.ElideRight
            }
        }
    }
}
