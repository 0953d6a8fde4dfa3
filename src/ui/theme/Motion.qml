pragma Singleton
import QtQuick
import Vorq.Native

// How long things move, in milliseconds. Whoever asked the desktop for less motion sees things
// change place at once, and new things fade in.
QtObject {
    readonly property bool reduced: App.look.reducesMotion

    readonly property int press: reduced ? 0 : 90
    readonly property int hover: reduced ? 0 : 140
    readonly property int enter: reduced ? 120 : 220
    readonly property int move: reduced ? 0 : 280
    readonly property int bounce: reduced ? 0 : 220
    readonly property int arrival: reduced ? 0 : 120
    readonly property int tipDelay: 600
    readonly property int workRise: 320
    readonly property int workFall: 480
    readonly property int workStagger: 160

    readonly property real pressScale: 0.94
    readonly property int enterRise: reduced ? 0 : 8
    readonly property int bounceReach: 6
}
