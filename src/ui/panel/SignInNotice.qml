import QtQuick
import Vorq
import Vorq.Native

// Says that nobody is signed in, and offers to sign in, in the browser or to this computer's account, and
// the settings.
Column {
    id: notice

    required property PanelSignIn signIn
    property Item tabs: null // takes the keys of the buttons first
    property bool isWaiting: false
    property bool offersSettings: true

    signal settingsWanted

    // What Tab leads to.
    function stops(): var {
        return visible ? [browse, ...(cancel.visible ? [cancel] : []), ...(local.visible ? [local] : []), ...(offersSettings ? [settings] : [])] : []
    }

    // A button that goes would take the keyboard with it.
    function followBrowser() {
        const isWaitingNow = signIn.isWaitingForBrowser
        if (isWaitingNow !== isWaiting && (cancel.activeFocus || local.activeFocus))
            browse.forceActiveFocus()
        isWaiting = isWaitingNow
    }

    visible: signIn.isMissing
    spacing: Theme.space2
    bottomPadding: Theme.space1
    Component.onCompleted: followBrowser()

    Connections {
        target: notice.signIn
        function onChanged() {
            notice.followBrowser()
        }
    }
    Txt {
        width: parent.width
        leftPadding: Theme.space1
        text: qsTr("You are not signed in.")
        size: Theme.rowSize
        font.weight: Font.DemiBold
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    Flow {
        width: parent.width
        spacing: Theme.space2

        TextButton {
            id: browse
            text: notice.isWaiting ? qsTr("Waiting for browser…") : qsTr("Sign in")
            look: notice.isWaiting ? TextButton.Secondary : TextButton.Primary
            tabs: notice.tabs
            onClicked: notice.signIn.signInInBrowser()
        }
        TextButton {
            id: cancel
            visible: notice.isWaiting
            text: qsTr("Cancel")
            look: TextButton.Quiet
            tabs: notice.tabs
            onClicked: notice.signIn.cancelBrowser()
        }
        TextButton {
            id: local
            visible: notice.signIn.isOffered && !notice.isWaiting
            text: notice.signIn.isRunning ? qsTr("Signing in…") : qsTr("Sign in on this computer")
            tabs: notice.tabs
            onClicked: notice.signIn.signIn()
        }
        TextButton {
            id: settings
            visible: notice.offersSettings
            text: qsTr("Settings")
            look: TextButton.Quiet
            tabs: notice.tabs
            onClicked: notice.settingsWanted()
        }
    }
    Txt {
        width: parent.width
        leftPadding: Theme.space1
        visible: text !== ""
        text: notice.signIn.failure
        size: Theme.metaSize
        leading: Theme.captionLeading
        color: Theme.bad
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
}
