pragma ComponentBehavior: Bound
import QtQuick
import Vorq

// Says what a control does, once the mouse or the keyboard has rested on it for a moment.
Item {
    id: tip

    required property Item owner
    property string words: "" // "" for nothing to say
    property bool wanted: false // the mouse or the keyboard is on the control
    property bool isPressed: false // which tells what it does better
    property bool isOver: false
    property Item plate: null
    readonly property bool isDue: wanted && !isOver && words !== "" && owner.visible

    function hide() {
        if (plate)
            plate.destroy()
        plate = null
    }

    visible: false
    onIsPressedChanged: if (isPressed) isOver = true
    onWantedChanged: if (!wanted) isOver = false
    onIsDueChanged: if (!isDue) hide()
    onWordsChanged: hide()
    Component.onDestruction: hide()

    Timer {
        interval: Motion.tipDelay
        running: tip.isDue
        onTriggered: tip.plate = shown.createObject(tip.owner.Window.contentItem)
    }
    Component {
        id: shown

        TipPlate {
            owner: tip.owner
            words: tip.words
        }
    }
}
