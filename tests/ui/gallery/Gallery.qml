import QtQuick
import Vorq

// The kit, a page for each control.
Rectangle {
    id: gallery

    property int page: 0
    property list<string> iconNames: []
    readonly property list<string> pages: ["Buttons", "Settings", "Fields", "Search", "Segmented", "Colors", "Badges", "Clips", "Menus",
                                           "Sheet", "DangerSheet", "FormSheet", "Empty", "Toasts", "Icons"]
    readonly property string name: pages[page]
    readonly property int padRoom: 28

    function step(by: int) {
        page = (page + by + pages.length) % pages.length
    }

    width: 980
    height: 720
    color: Theme.window
    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true

    Txt {
        id: heading
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: gallery.padRoom
        y: gallery.padRoom
        text: gallery.name
        size: Theme.hugeSize
        font.weight: Font.Bold
        horizontalAlignment: Text.AlignLeft
    }
    Loader {
        x: gallery.padRoom
        y: heading.y + heading.height + Theme.space5
        width: parent.width - 2 * x
        height: parent.height - y - gallery.padRoom - Theme.space5
        source: gallery.name + "Page.qml"
        onLoaded: {
            const icons = item as IconsPage
            if (icons)
                icons.names = gallery.iconNames
        }
    }
    Txt {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: gallery.padRoom / 2
        anchors.leftMargin: gallery.padRoom
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
        text: "Page Up, Page Down: page   F2: theme   F3: direction   F4: text scale   F5: contrast   F6: motion"
        size: 11
        color: Theme.ink3
    }
}
