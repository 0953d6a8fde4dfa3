import QtQuick
import Vorq
import Vorq.Native

// A colour of the panel, as hex digits or by a colour well.
Item {
    id: row

    required property string title
    property string sub: ""
    property string value: ""
    property color fallback: Theme.userBlock
    readonly property string draft: field.text
    readonly property bool bad: checker.bad
    readonly property color shownColor: value === "" || !HexColors.color(value).valid ? fallback : HexColors.color(value)
    readonly property int sideRoom: 16
    readonly property int controlsWidth: 286
    readonly property int wellSize: 34

    // The new stored value; "" clears it.
    signal committed(string hex)

    implicitHeight: Math.max(words.height, wellSize) + 28 + (bad ? problem.height + Theme.space2 : 0)

    function commit() {
        const result = HexColors.commit(field.text)
        checker.bad = !result.valid
        if (result.valid)
            store(result.hex)
    }
    function store(hex) {
        field.text = hex
        if (hex !== value)
            committed(hex)
    }
    onValueChanged: {
        checker.bad = false
        field.text = value
    }

    // What is being chosen is seen at once; without a choice the former colour comes back.
    ColorDialog {
        id: picker
        property string former
        title: row.title
        onPreviewed: color => row.store(HexColors.hexOf(color))
        onAccepted: color => row.store(HexColors.hexOf(color))
        onRejected: row.store(former)
    }
    QtObject {
        id: checker
        property bool bad: false
    }
    Column {
        id: words
        x: row.sideRoom
        y: 14
        width: parent.width - row.sideRoom - row.controlsWidth
        spacing: 2

        Txt {
            text: row.title
            size: 14
            font.weight: Font.Medium
        }
        Txt {
            width: parent.width
            visible: text !== ""
            text: row.sub
            size: Theme.metaSize
            leading: Theme.captionLeading
            color: Theme.ink2
            wrapMode: Text.Wrap
        }
    }
    Row {
        id: controls
        anchors.right: parent.right
        anchors.rightMargin: row.sideRoom
        y: 14
        spacing: Theme.space2

        Control {
            id: well
            width: row.wellSize
            height: row.wellSize
            focusPolicy: Qt.StrongFocus
            text: qsTr("Choose %1").arg(row.title)
            onClicked: {
                picker.former = row.value
                picker.open(row.shownColor)
            }
            ringRadius: Theme.radiusTile
            background: Squircle {
                radius: Theme.radiusTile
                fillTop: row.shownColor
                rimTop: Theme.ring
                rimBottom: Theme.ring
            }
        }
        TextField {
            id: field
            mono: true
            bad: row.bad
            text: row.value
            placeholderText: "#RRGGBB"
            Accessible.name: qsTr("%1 hex").arg(row.title)
            onAccepted: row.commit()
            onActiveFocusChanged: if (!activeFocus) row.commit()
        }
        TextButton {
            id: clear
            visible: row.value !== ""
            size: row.wellSize
            text: qsTr("Clear")
            onClicked: {
                field.text = ""
                row.commit()
            }
        }
    }
    Row {
        id: problem
        anchors.right: parent.right
        anchors.rightMargin: row.sideRoom
        anchors.top: controls.bottom
        anchors.topMargin: Theme.space2
        visible: problemText.text !== ""
        spacing: 5

        Ico {
            anchors.verticalCenter: parent.verticalCenter
            name: row.bad ? "info" : "warnFill"
            size: 14
            color: problemText.color
        }
        Txt {
            id: problemText
            anchors.verticalCenter: parent.verticalCenter
            text: row.bad ? qsTr("Enter a valid hex like #F97316")
                : row.value !== "" && HexColors.isLowContrast(row.value) ? qsTr("Low contrast with text") : ""
            size: Theme.metaSize
            font.weight: Font.Medium
            color: row.bad ? Theme.bad : Theme.warn
            Accessible.role: Accessible.AlertMessage
            Accessible.name: problemText.text
        }
    }
}
