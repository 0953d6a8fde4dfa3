import QtQuick
import Vorq

Column {
    spacing: 22

    Repeater {
        model: [Theme.window, Theme.surface, Theme.surface2]

        Rectangle {
            required property color modelData

            width: 720
            height: row.height + 32
            radius: Theme.radiusCard
            color: modelData
            border.color: Theme.hairline

            Row {
                id: row
                x: 16
                y: 16
                spacing: 12

                Badge { text: "Granted"; look: Badge.Ok }
                Badge { text: "Not set"; look: Badge.Warn }
                Badge { text: "Denied"; look: Badge.Bad }
                Badge { text: "Draft" }
                Badge { text: "On this computer"; iconName: "lock" }
                Badge { text: "A state that takes more words than it has room for"; look: Badge.Warn }
            }
        }
    }
}
