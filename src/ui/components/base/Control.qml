import QtQuick
import QtQuick.Templates as T
import Vorq

// What can be pressed: by the mouse, by Space, Return and Enter, and by screen readers. Its text is
// its accessible name, its help the description of it. Nothing of it shows but the ring and the tip.
T.AbstractButton {
    id: control

    property int role: Accessible.Button // for screen readers; Qt overwrites the attached one
    property string help: ""
    property string tip: "" // "" for a control that needs none
    property real ringRadius: Theme.radiusControl
    property real ringGap: Theme.ringGap // negative within a row
    property Item tabs: null // takes the keys first

    // As if it had been pressed and let go. A control that is off does nothing.
    function press() {
        if (enabled)
            clicked()
    }
    // A key that is held presses once, like the mouse.
    function pressByKey(event) {
        if (!event.isAutoRepeat)
            press()
    }

    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    Accessible.role: role
    Accessible.name: text
    Accessible.description: help
    Keys.forwardTo: tabs ? [tabs] : []
    Keys.onReturnPressed: event => control.pressByKey(event)
    Keys.onEnterPressed: event => control.pressByKey(event)

    FocusRing {
        visible: control.visualFocus
        around: control.ringRadius
        gap: control.ringGap
    }
    Tip {
        owner: control
        words: control.tip
        wanted: control.hovered || control.visualFocus
        isPressed: control.down
    }
}
