import QtQuick
import Vorq

// Saves a form and, while that is under way, gives it up; with what went wrong above.
Column {
    id: foot

    required property string error // "" for nothing wrong
    required property bool isSaving
    readonly property string underWay: qsTr("Saving…")

    signal saveWanted
    signal cancelWanted

    spacing: Theme.space3
    onErrorChanged: spoken.say(error)
    onIsSavingChanged: {
        // What goes would take the keyboard with it.
        if (!isSaving && cancel.activeFocus)
            save.forceActiveFocus(Qt.TabFocusReason)
        if (isSaving)
            spoken.say(underWay)
        else if (error === "") // which may have been said just before
            spoken.say("")
    }

    Announcement {
        id: spoken
    }
    Row {
        width: parent.width
        visible: foot.error !== ""
        spacing: 6

        Ico {
            id: sign
            y: Math.round((words.lineHeight - height) / 2)
            name: "info"
            size: Theme.grown(15)
            color: Theme.bad
        }
        Txt {
            id: words
            width: parent.width - sign.width - parent.spacing
            text: foot.error
            leading: Theme.captionLeading
            font.weight: Font.Medium
            color: Theme.bad
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
    Row {
        spacing: Theme.space2

        TextButton {
            id: save
            text: foot.isSaving ? foot.underWay : qsTr("Save")
            look: foot.isSaving ? TextButton.Secondary : TextButton.Primary
            size: 36
            onClicked: if (!foot.isSaving) foot.saveWanted()
        }
        TextButton {
            id: cancel
            visible: foot.isSaving
            text: qsTr("Cancel")
            look: TextButton.Quiet
            size: 36
            onClicked: foot.cancelWanted()
        }
    }
}
