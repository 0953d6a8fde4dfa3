import QtQuick
import Vorq
import Vorq.Native

// Points from the card at what is selected.
SelectionArrowShape {
    width: 40
    height: 16
    fill: pointsUp ? Theme.overlayTop : Theme.overlayBottom
    rim: pointsUp ? Theme.floatRimTop : Theme.floatRimBottom
    hairline: Theme.floatHairline
    Accessible.role: Accessible.Graphic
    Accessible.name: qsTr("Selected text")
}
