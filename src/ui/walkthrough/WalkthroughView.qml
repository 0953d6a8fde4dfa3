import QtQuick
import Vorq
import Vorq.Native

// The window that asks the user to let Vorq read other applications, says what is left to be done once
// they have, and shows the self-test. Return does what it offers, Escape closes it.
FocusScope {
    id: view

    property int tallest: 100000 // for which the screen has room
    readonly property Walkthrough walkthrough: App.walkthrough
    readonly property list<Component> pages: [request, granted, checks, help]
    readonly property Component wanted: pages[walkthrough.page]
    readonly property WalkthroughPage current: page.item as WalkthroughPage
    readonly property string title: current?.title ?? ""
    readonly property bool isRequest: walkthrough.page === Walkthrough.Request
    readonly property bool isChecks: walkthrough.page === Walkthrough.Checks
    readonly property bool isHelp: walkthrough.page === Walkthrough.Help
    readonly property Item holder: Window.activeFocusItem // of the keyboard
    property bool hadRing: true // what had it last
    property string said: "" // of what went wrong

    function reject() {
        if (isHelp)
            walkthrough.goBack()
        else if (isChecks && walkthrough.selfTest.isTesting)
            walkthrough.selfTest.cancel()
        else
            walkthrough.close()
    }
    function accept() {
        if (isRequest)
            walkthrough.openSystemSettings()
        else if (isHelp)
            walkthrough.goBack()
        else if (!isChecks)
            walkthrough.close()
    }
    function pressKey(event) {
        const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
        event.accepted = isReturn || event.key === Qt.Key_Escape
        if (!event.accepted || event.isAutoRepeat)
            return
        if (isReturn)
            accept()
        else
            reject()
    }

    width: Theme.grown(isChecks ? 560 : 440)
    height: current?.implicitHeight ?? 0
    focus: true
    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.Dialog
    Accessible.name: title
    onHolderChanged: if (holder instanceof Control) hadRing = holder.visualFocus
    Keys.onPressed: event => view.pressKey(event)

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: view.walkthrough.close()
    }
    Binding {
        target: view.Window.window
        property: "title"
        value: view.title
        when: view.title !== ""
    }
    // Where nothing shines through the window it is cut, and casts no shadow: the edge tells it from
    // what is behind.
    Rectangle {
        anchors.fill: parent
        visible: Theme.opaque
        color: Qt.tint(Theme.floatTop, Theme.hairline2)
    }
    Glass {
        anchors.fill: parent
        anchors.margins: Theme.opaque ? 1 : 0
        floats: true
        casts: false
        radius: Theme.radiusSheet - anchors.margins
    }
    Loader {
        id: page
        width: view.width
        height: view.height
        focus: true
        sourceComponent: view.wanted
        onLoaded: view.current.takeKeyboard(view.hadRing ? Qt.TabFocusReason : Qt.OtherFocusReason)
    }
    Binding {
        target: page.item
        property: "tallest"
        value: view.tallest
    }
    Announcement {
        id: spoken
    }
    Connections {
        target: view.walkthrough
        function onChanged() {
            if (view.walkthrough.problem !== view.said)
                spoken.say(view.walkthrough.problem)
            view.said = view.walkthrough.problem
        }
    }
    Component {
        id: request
        AccessRequest {}
    }
    Component {
        id: granted
        AccessGranted {}
    }
    Component {
        id: checks
        SelfTestPage {}
    }
    Component {
        id: help
        AccessHelp {}
    }
}
