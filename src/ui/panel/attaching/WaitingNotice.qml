import QtQuick
import Vorq

// A prompt that was sent waits for its clips, and can be taken back.
Item {
    id: notice

    required property WaitingPrompt waiting
    property Item tabs: null // takes the keys of the button first

    // The button that had the keyboard is gone.
    signal keyboardFreed

    // What Tab leads to.
    function stops(): var {
        return visible ? [cancel] : []
    }

    visible: waiting.isWaiting
    onVisibleChanged: if (!visible && cancel.activeFocus) keyboardFreed()
    implicitHeight: Math.max(cancel.height, words.height)

    WorkBars {
        id: bars
        anchors.left: parent.left
        anchors.leftMargin: Theme.space2
        anchors.verticalCenter: parent.verticalCenter
    }
    Txt {
        id: words
        anchors.left: bars.right
        anchors.leftMargin: Theme.space2
        anchors.right: cancel.left
        anchors.rightMargin: Theme.space2
        anchors.verticalCenter: parent.verticalCenter
        text: notice.waiting.sentence
        size: Theme.metaSize
        leading: Theme.captionLeading
        color: Theme.ink2
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    TextButton {
        id: cancel
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Don’t send yet")
        look: TextButton.Quiet
        size: 28
        tabs: notice.tabs
        onClicked: notice.waiting.cancel()
    }
}
