import QtQuick
import Vorq
import Vorq.Native

// Says that nobody is signed in, and offers the account of this computer.
Column {
    id: notice

    required property PanelSignIn signIn
    property Item tabs: null // takes the keys of the button first
    readonly property alias button: start

    // What Tab leads to.
    function stops(): var {
        return visible && start.visible ? [start] : []
    }

    visible: signIn.isMissing
    spacing: Theme.space2
    bottomPadding: Theme.space1

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
    TextButton {
        id: start
        visible: notice.signIn.isOffered
        text: notice.signIn.isRunning ? qsTr("Signing in…") : qsTr("Sign in on this computer")
        look: TextButton.Primary
        tabs: notice.tabs
        onClicked: notice.signIn.signIn()
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
