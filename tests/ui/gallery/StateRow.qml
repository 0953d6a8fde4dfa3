pragma ComponentBehavior: Bound
import QtQuick
import Vorq

// One control in each state, beside each other. The program brings it into the state that the object
// name wants.
Row {
    id: row

    required property string name
    required property Component control
    property list<string> kinds: ["rest", "hover", "pressed", "focus", "disabled"]
    property int cellWidth: Theme.grown(140)
    property int labelWidth: Theme.grown(130)

    Txt {
        width: row.labelWidth
        anchors.verticalCenter: parent.verticalCenter
        text: row.name
        size: Theme.metaSize
        color: Theme.ink2
    }
    Repeater {
        model: row.kinds

        Item {
            id: cell

            required property string modelData

            width: row.cellWidth
            height: loader.height

            Loader {
                id: loader
                objectName: "want:" + cell.modelData
                enabled: cell.modelData !== "disabled"
                sourceComponent: row.control
                anchors.left: parent.left
            }
        }
    }
}
