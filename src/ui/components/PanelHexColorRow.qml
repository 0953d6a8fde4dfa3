import QtQuick
import Vorq
import Vorq.Native

// A colour of the panel, as hex digits or by a colour well.
SettingsRow {
    id: row

    property string value: ""
    property color fallback: Theme.userBlock
    readonly property string draft: field.text
    readonly property alias input: field
    readonly property bool bad: checker.bad
    readonly property color shownColor: value === "" || !HexColors.color(value).valid ? fallback : HexColors.color(value)
    readonly property int wellSize: 34
    readonly property int leastField: Theme.grown(84)
    readonly property string problem: bad ? qsTr("Enter a valid hex like #F97316")
                                    : value !== "" && HexColors.isLowContrast(value) ? qsTr("Low contrast with text") : ""

    // The new stored value; "" clears it.
    signal committed(string hex)

    function commit() {
        const result = HexColors.commit(field.text)
        checker.bad = !result.valid
        if (result.valid)
            store(result.hex)
    }
    function store(hex) {
        checker.bad = false
        field.text = hex
        if (hex !== value)
            committed(hex)
    }
    onValueChanged: {
        checker.bad = false
        field.text = value
    }
    onProblemChanged: spoken.say(problem)

    // What is being chosen is seen at once; without a choice the former colour comes back.
    ColorDialog {
        id: picker
        property string former
        title: row.text
        onPreviewed: color => row.store(HexColors.hexOf(color))
        onAccepted: color => row.store(HexColors.hexOf(color))
        onRejected: row.store(former)
    }
    QtObject {
        id: checker
        property bool bad: false
    }
    Column {
        width: choices.width
        spacing: Theme.space2

        Announcement {
            id: spoken
        }
        Flow {
            id: choices
            readonly property real clearRoom: clear.visible ? spacing + clear.width : 0

            width: Math.min(row.room, well.width + spacing + field.width + clearRoom)
            spacing: Theme.space2

            Control {
                id: well
                width: height
                height: Theme.grown(row.wellSize)
                focusPolicy: Qt.StrongFocus
                text: qsTr("Choose %1").arg(row.text)
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
                width: Math.max(row.leastField, Math.min(implicitWidth, row.room - well.width - choices.spacing - choices.clearRoom))
                mono: true
                bad: row.bad
                text: row.value
                placeholderText: "#RRGGBB"
                Accessible.name: qsTr("%1 hex").arg(row.text)
                onAccepted: row.commit()
                onActiveFocusChanged: if (!activeFocus) row.commit()
            }
            TextButton {
                id: clear
                visible: row.value !== ""
                size: row.wellSize
                text: qsTr("Clear")
                onVisibleChanged: if (!visible && activeFocus) field.forceActiveFocus(Qt.BacktabFocusReason)
                onClicked: {
                    field.text = ""
                    row.commit()
                }
            }
        }
        Row {
            id: remark
            width: parent.width
            visible: row.problem !== ""
            spacing: 5

            Ico {
                id: sign
                y: Math.round((firstLine.height - height) / 2)
                name: row.bad ? "info" : "warnFill"
                size: Theme.grown(14)
                color: words.color
            }
            Txt {
                id: words
                width: parent.width - sign.width - remark.spacing
                text: row.problem
                size: Theme.metaSize
                leading: Theme.captionLeading
                font.weight: Font.Medium
                color: row.bad ? Theme.bad : Theme.warn
                wrapMode: Text.Wrap
                horizontalAlignment: Text.AlignLeft
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            FontMetrics {
                id: firstLine
                font: words.font
            }
        }
    }
}
