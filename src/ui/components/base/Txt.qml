import QtQuick
import Vorq

// A text in the type of the program. Leading is the distance between lines beyond their own.
Text {
    id: txt

    property real size: Theme.controlSize
    property real leading: 0
    property bool mono: false

    color: Theme.ink
    textFormat: Text.PlainText
    font.family: mono ? Theme.mono : size >= Theme.displaySize ? Theme.display : Theme.sans
    font.pointSize: Theme.points(size)
    font.letterSpacing: mono ? 0 : size >= Theme.hugeSize ? -0.5 : size >= Theme.displaySize ? -0.3 : size >= Theme.largeSize ? -0.18 : 0
    lineHeightMode: leading > 0 ? Text.FixedHeight : Text.ProportionalHeight
    lineHeight: leading > 0 ? Math.ceil(metrics.height) + leading : 1
    bottomPadding: leading > 0 ? -leading : 0
    linkColor: Theme.accentInk

    FontMetrics {
        id: metrics
        font: txt.font
    }
}
