import QtQuick
import Vorq
import Vorq.Native

// A sheet of glass: the panel itself, or with `floats` what lies over it.
Item {
    id: glass

    property ThemeTokens tokens: Theme // which it is drawn in
    property bool floats: false
    property real density: 1 // of what floats: less lets shine through what lies beneath
    property int radius: tokens.radiusPanel
    property int elevation: 3
    property bool casts: floats
    default property alias content: body.data
    readonly property alias plate: sheet

    Shadow {
        visible: glass.casts && !glass.tokens.opaque
        target: glass
        level: glass.elevation
        radius: glass.radius
    }
    // Without translucency the window is cut out by whole pixels: what the sheet covers in part on
    // its edge must not show the black beneath.
    Rectangle {
        anchors.fill: parent
        visible: glass.tokens.opaque && !glass.floats
        gradient: Gradient {
            GradientStop { position: 0; color: Qt.tint(glass.tokens.glassTop, glass.tokens.glassHairline) }
            GradientStop { position: 1; color: Qt.tint(glass.tokens.glassBottom, glass.tokens.glassHairline) }
        }
    }
    Squircle {
        id: sheet
        anchors.fill: parent
        radius: glass.radius
        smoothing: glass.tokens.smoothing
        fillTop: glass.floats ? glass.tokens.withAlpha(glass.tokens.floatTop, glass.density) : glass.tokens.glassTop
        fillBottom: glass.floats ? glass.tokens.withAlpha(glass.tokens.floatBottom, glass.density) : glass.tokens.glassBottom
        rimTop: glass.floats ? glass.tokens.floatRimTop : glass.tokens.glassRimTop
        rimBottom: glass.floats ? glass.tokens.floatRimBottom : glass.tokens.glassRimBottom
        hairline: glass.floats ? glass.tokens.floatHairline : glass.tokens.glassHairline
        specular: glass.floats ? "transparent" : glass.tokens.glassSpecular
        wash: glass.floats ? "transparent" : glass.tokens.glassWash
        grain: glass.floats ? 0 : glass.tokens.glassGrain
    }
    Item {
        id: body
        anchors.fill: parent
    }
}
