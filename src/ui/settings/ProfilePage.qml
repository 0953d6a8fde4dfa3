import QtQuick
import Vorq
import Vorq.Native

// The name and the picture of the user.
SettingsPage {
    id: page

    readonly property ProfileEdit profile: App.settings.profile
    readonly property AccountCard account: App.settings.account
    readonly property int pictureSize: Theme.grown(96)
    readonly property string pictureError: profile.pictureError
    readonly property bool hasPictureError: pictureError !== "" && pictureNote === pictureError
    readonly property string pictureNote: picture.isWelcoming ? qsTr("Drop the picture to use it.")
                                        : profile.isReadingPicture ? qsTr("Reading the picture…")
                                        : pictureError !== "" ? pictureError : qsTr("Tap the + to add a photo.")

    title: qsTr("Profile")
    first: firstName.input
    onPictureErrorChanged: spoken.say(pictureError)

    FormCard {
        width: parent.width

        Item {
            width: parent.width
            height: Math.max(picture.height, about.height)

            ProfilePicture {
                id: picture
                anchors.left: parent.left
                anchors.verticalCenter: parent.verticalCenter
                size: page.pictureSize
                profile: page.profile
                initials: page.account.initials
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
                    font.weight: page.hasPictureError ? Font.Medium : Font.Normal
                    color: page.hasPictureError ? Theme.bad : Theme.ink2
                    wrapMode: Text.Wrap
                    horizontalAlignment: Text.AlignLeft
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text

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
