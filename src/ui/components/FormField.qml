import QtQuick
import Vorq
import Vorq.Native

// A field with its label above it and, below it, what is wrong with what stands in it.
Column {
    id: form

    required property string label
    property string hint: "" // what is expected; an error takes its place
    property string error: "" // "" for nothing wrong
    property bool isPassword: false
    property bool isRevealed: false
    property alias text: field.text
    property alias readOnly: field.readOnly // for now, with the keyboard kept
    property alias placeholder: field.placeholderText
    readonly property alias input: field
    readonly property string note: error !== "" ? error : hint
    readonly property int revealSize: Theme.grown(28)

    // Return in the field.
    signal accepted

    spacing: 6
    onErrorChanged: spoken.say(error)

    Announcement {
        id: spoken
    }
    SecretField {
        target: form.isPassword ? field : null
    }
    Txt {
        width: parent.width
        text: form.label
        size: Theme.metaSize
        font.weight: Font.DemiBold
        color: form.enabled ? Theme.ink2 : Theme.inkOff
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignLeft
        Accessible.ignored: true // the field has its name
    }
    TextField {
        id: field
        width: parent.width
        bad: form.error !== ""
        endRoom: form.isPassword ? form.revealSize + Theme.space1 : 0
        echoMode: form.isPassword && !form.isRevealed ? TextInput.Password : TextInput.Normal
        passwordCharacter: "•"
        inputMethodHints: form.isPassword ? Qt.ImhSensitiveData | Qt.ImhNoAutoUppercase | Qt.ImhNoPredictiveText : Qt.ImhNone
        onAccepted: form.accepted()
        Accessible.name: form.label
        Accessible.description: form.note
        // Qt takes the name away from what it marks so itself; the SecretField says it to readers.
        Accessible.onPasswordEditChanged: Accessible.passwordEdit = false

        IconButton {
            anchors.right: parent.right
            anchors.rightMargin: Theme.space1
            anchors.verticalCenter: parent.verticalCenter
            visible: form.isPassword
            size: form.revealSize
            slack: 1
            iconSize: Theme.grown(17)
            iconName: form.isRevealed ? "eyeOff" : "eye"
            text: form.isRevealed ? qsTr("Hide the password") : qsTr("Show the password")
            onClicked: form.isRevealed = !form.isRevealed
        }
    }
    Row {
        id: notes
        width: parent.width
        visible: form.note !== ""
        spacing: 5

        Ico {
            id: sign
            y: Math.round((firstLine.height - height) / 2)
            visible: form.error !== ""
            name: "info"
            size: Theme.grown(14)
            color: Theme.bad
        }
        Txt {
            width: parent.width - (sign.visible ? sign.width + notes.spacing : 0)
            text: form.note
            size: Theme.metaSize
            leading: Theme.captionLeading
            font.weight: form.error !== "" ? Font.Medium : Font.Normal
            color: form.error !== "" ? Theme.bad : Theme.ink2
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignLeft
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        FontMetrics {
            id: firstLine
            font.family: Theme.sans
            font.pointSize: Theme.points(Theme.metaSize)
        }
    }
}
