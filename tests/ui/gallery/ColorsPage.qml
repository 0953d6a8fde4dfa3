import QtQuick
import Vorq

Row {
    spacing: 28

    SettingsGroup {
        width: 520
        title: "Colors of the panel"

        PanelHexColorRow { width: parent.width; text: "Background"; sub: "None chosen."; fallback: Theme.window }
        PanelHexColorRow { width: parent.width; text: "Your messages"; value: "#2E48CC"; iconName: "palette" }
        PanelHexColorRow { width: parent.width; text: "Replies"; sub: "A color that is hard to read on."; value: "#F97316" }
        PanelHexColorRow { objectName: "want:focus:2"; width: parent.width; text: "Focus"; value: "#112233" }
        PanelHexColorRow { width: parent.width; enabled: false; text: "Disabled"; value: "#112233" }
        PanelHexColorRow { id: wrong; width: parent.width; text: "Wrong"; value: "#112233" }
    }
    SettingsGroup {
        width: 340
        title: "Narrow"

        PanelHexColorRow { width: parent.width; text: "Your messages, in a row that is narrow"; value: "#2E48CC" }
        PanelHexColorRow { width: parent.width; text: "Replies"; sub: "A color that is hard to read on."; value: "#F97316"; iconName: "palette" }
    }
    Component.onCompleted: {
        wrong.input.text = "#12"
        wrong.commit()
    }
}
