import QtQuick
import Vorq
import Vorq.Native

// A state in a word and an icon, never by its colour alone.
Squircle {
    id: badge

    enum Look { Neutral, Ok, Warn, Bad }

    required property string text
    property int look: Badge.Neutral
    property string iconName: ["", "check", "history", "close"][look]
    property real widest: Theme.grown(200) // longer words end in an ellipsis
    readonly property int sidePadding: 9
    readonly property int iconSize: Theme.grown(12)
    readonly property color ink: [Theme.ink2, Theme.ok, Theme.warn, Theme.bad][look]

    implicitHeight: Theme.grown(22)
    implicitWidth: Math.min(widest, Math.ceil(row.implicitWidth) + 2 * sidePadding)
    radius: height / 2
    smoothing: 0
    fillTop: [Theme.track, Theme.okSoft, Theme.warnSoft, Theme.badSoft][look]
    rimTop: Theme.high ? ink : "transparent"
    rimBottom: rimTop
    Accessible.role: Accessible.StaticText
    Accessible.name: text

    Tip {
        owner: badge
        words: label.truncated ? badge.text : ""
        wanted: hover.hovered
    }
    HoverHandler {
        id: hover
    }
    Row {
        id: row
        anchors.centerIn: parent
        spacing: Theme.space1

        Ico {
            anchors.verticalCenter: parent.verticalCenter
            visible: badge.iconName !== ""
            name: badge.iconName
            size: badge.iconSize
            color: badge.ink
        }
        Txt {
            id: label
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(Math.ceil(implicitWidth), badge.widest - 2 * badge.sidePadding - (badge.iconName !== "" ? badge.iconSize + Theme.space1 : 0))
            text: badge.text
            size: Theme.badgeSize
            font.weight: Font.DemiBold
            color: badge.ink
            elide: Text.ElideRight
            Accessible.ignored: true
        }
    }
}
