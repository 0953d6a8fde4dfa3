import QtQuick
import QtQuick.Templates as T
import Vorq
import Vorq.Native

// A field for one line of text.
T.TextField {
    id: field

    property bool bad: false
    property bool mono: false
    property real startRoom: 0 // for what stands in the field before the text
    property real endRoom: 0
    readonly property bool isMirrored: LayoutMirroring.enabled
    readonly property int sidePadding: 12
    readonly property real hoverRimOpacity: 0.34
    readonly property int caretRoom: 2 // before what stands in for the text

    implicitWidth: Theme.grown(118)
    implicitHeight: Theme.grown(34)
    leftPadding: sidePadding + (isMirrored ? endRoom : startRoom)
    rightPadding: sidePadding + (isMirrored ? startRoom : endRoom)
    verticalAlignment: TextInput.AlignVCenter
    font.family: mono ? Theme.mono : Theme.sans
    font.pointSize: Theme.points(Theme.controlSize)
    font.weight: Font.Medium
    color: enabled ? Theme.ink : Theme.inkOff
    selectionColor: Theme.selection
    selectedTextColor: Theme.ink
    selectByMouse: true
    Accessible.role: Accessible.EditableText
    Accessible.readOnly: readOnly || !enabled

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
        x: field.leftPadding + (field.isMirrored ? 0 : field.caretRoom)
        width: parent.width - field.leftPadding - field.rightPadding - field.caretRoom
        visible: field.text === "" && field.preeditText === ""
        text: field.placeholderText
        font: field.font
        color: field.enabled ? Theme.ink3 : Theme.inkOff
        horizontalAlignment: field.effectiveHorizontalAlignment
        elide: Text.ElideRight
        Accessible.ignored: true
    }
}
