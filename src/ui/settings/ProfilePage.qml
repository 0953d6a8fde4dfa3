import QtQuick
import Vorq
import Vorq.Native

// The name and the picture of the user.
SettingsPage {
    id: page

    readonly property ProfileEdit profile: App.settings.profile
    readonly property AccountCard account: App.settings.account
    readonly property int pictureSize: Theme.grown(96)
    readonly property int plusSize: Theme.grown(30)
    readonly property string pictureNote: profile.isReadingPicture ? qsTr("Reading the picture…")
                                        : profile.pictureError !== "" ? profile.pictureError : qsTr("Tap the + to add a photo.")

    title: qsTr("Profile")
    first: firstName.input

    FormCard {
        width: parent.width

        Item {
            width: parent.width
            height: Math.max(picture.height, about.height)

            Avatar {
                id: picture
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                size: page.pictureSize
                picture: page.profile.picture
                initials: page.account.initials

                Rectangle {
                    anchors.right: parent.right
                    anchors.bottom: parent.bottom
                    anchors.margins: -3
                    width: plus.width + 6
                    height: width
                    radius: width / 2
                    color: Theme.surface

                    IconButton {
                        id: plus
                        anchors.centerIn: parent
                        size: page.plusSize
                        iconName: "plus"
                        look: IconButton.Accent
                        text: qsTr("Choose a profile picture")
                        onClicked: App.settings.choosePicture()
                    }
                }
            }
            Column {
                id: about
                anchors.left: picture.right
                anchors.leftMargin: Theme.space5
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                spacing: 3

                Txt {
                    width: parent.width
                    text: page.account.name
                    size: Theme.displaySize
                    font.weight: Font.Bold
                    elide: Text.ElideRight
                    horizontalAlignment: Text.AlignLeft
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                Txt {
                    width: parent.width
                    visible: text !== "" && text !== page.account.name
                    text: page.account.email
                    color: Theme.ink2
                    elide: Text.ElideRight
                    horizontalAlignment: Text.AlignLeft
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
                Txt {
                    id: note
                    width: parent.width
                    topPadding: Theme.space1
                    text: page.pictureNote
                    size: Theme.metaSize
                    leading: Theme.captionLeading
                    font.weight: page.profile.pictureError !== "" ? Font.Medium : Font.Normal
                    color: page.profile.pictureError !== "" ? Theme.bad : Theme.ink2
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignLeft
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    onTextChanged: spoken.say(page.profile.pictureError)

                    Announcement {
                        id: spoken
                    }
                }
            }
        }
        FormField {
            id: firstName
            width: parent.width
            readOnly: page.profile.isSaving
            label: qsTr("First name")
            text: page.profile.firstName
            onTextChanged: page.profile.firstName = text
            onAccepted: page.profile.save()
        }
        FormField {
            width: parent.width
            readOnly: page.profile.isSaving
            label: qsTr("Last name")
            text: page.profile.lastName
            onTextChanged: page.profile.lastName = text
            onAccepted: page.profile.save()
        }
    }
    FormFoot {
        width: parent.width
        error: page.profile.error
        isSaving: page.profile.isSaving
        onSaveWanted: page.profile.save()
        onCancelWanted: page.profile.cancel()
    }
}
