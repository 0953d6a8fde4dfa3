import QtQuick
import Vorq
import Vorq.Native

// A sheet of glass: the panel itself, or with `floats` what lies over it.
Item {
    id: glass

    property bool floats: false
    property int radius: Theme.radiusPanel
    property int elevation: 3
    property bool casts: floats
    default property alias content: body.data
    readonly property alias plate: sheet

    Shadow {
        visible: glass.casts && !Theme.opaque
        target: glass
        level: glass.elevation
        radius: glass.radius
    }
    // Without translucency the window is cut out by whole pixels: what the sheet covers in part on
    // its edge must not show the black beneath.
    Rectangle {
        anchors.fill: parent
        visible: Theme.opaque && !glass.floats
        gradient: Gradient {
            GradientStop { position: 0; color: Qt.tint(Theme.glassTop, Theme.glassHairline) }
            GradientStop { position: 1; color: Qt.tint(Theme.glassBottom, Theme.glassHairline) }
        }
    }
    Squircle {
        id: sheet
        anchors.fill: parent
        radius: glass.radius
        smoothing: Theme.smoothing
        fillTop: glass.floats ? Theme.floatTop : Theme.glassTop
        fillBottom: glass.floats ? Theme.floatBottom : Theme.glassBottom
        rimTop: glass.floats ? Theme.floatRimTop : Theme.glassRimTop
        rimBottom: glass.floats ? Theme.floatRimBottom : Theme.glassRimBottom
        hairline: glass.floats ? Theme.floatHairline : Theme.glassHairline
        specular: glass.floats ? "transparent" : Theme.glassSpecular
        wash: glass.floats ? "transparent" : Theme.glassWash
        grain: glass.floats ? 0 : Theme.glassGrain
    }
    Item {
        id: body
        anchors.fill: parent
    }
}
