import QtQuick
import QtQuick.Templates as T
import Vorq
import Vorq.Native

// A field for one line of text.
T.TextField {
    id: field

    property bool bad: false
    property bool mono: false
    readonly property int sidePadding: 12
    readonly property real hoverRimOpacity: 0.34

    implicitWidth: 118
    implicitHeight: Theme.grown(34)
    leftPadding: sidePadding
    rightPadding: sidePadding
    verticalAlignment: TextInput.AlignVCenter
    font.family: mono ? Theme.mono : Theme.sans
    font.pointSize: Theme.points(Theme.controlSize)
    font.weight: Font.Medium
    color: Theme.ink
    selectionColor: Theme.selection
    selectedTextColor: Theme.ink
    selectByMouse: true
    Accessible.role: Accessible.EditableText

    background: Squircle {
        radius: Theme.radiusControl
        fillTop: Theme.fieldWell
        rimTop: field.bad ? Theme.bad : field.hovered ? Theme.faint(Theme.ink, field.hoverRimOpacity) : Theme.hairline2
        rimBottom: rimTop
        FocusRing {
            visible: field.activeFocus
            gap: 0
        }
    }

    PointerSelection {
        target: field
    }
    Txt {
        anchors.verticalCenter: parent.verticalCenter
        x: field.leftPadding
        width: parent.width - field.leftPadding - field.rightPadding
        visible: field.text === "" && field.preeditText === ""
        text: field.placeholderText
        font: field.font
        color: Theme.ink3
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
