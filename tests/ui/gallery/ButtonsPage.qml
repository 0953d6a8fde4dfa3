import QtQuick
import Vorq

Column {
    spacing: 14

    Row {
        leftPadding: Theme.grown(130)

        Repeater {
            model: ["rest", "hover", "pressed", "focus", "disabled"]

            Txt {
                required property string modelData
                width: Theme.grown(140)
                text: modelData
                size: Theme.captionSize
                font.weight: Font.DemiBold
                color: Theme.ink3
            }
        }
    }
    StateRow {
        name: "Icon, plain"
        control: IconButton { iconName: "history"; text: "History" }
    }
    StateRow {
        name: "Icon, soft"
        control: IconButton { iconName: "plus"; text: "Add"; look: IconButton.Soft }
    }
    StateRow {
        name: "Icon, accent"
        control: IconButton { iconName: "send"; text: "Send"; look: IconButton.Accent }
    }
    StateRow {
        name: "Primary"
        control: TextButton { text: "Replace"; look: TextButton.Primary }
    }
    StateRow {
        name: "Secondary"
        control: TextButton { text: "Restart"; iconName: "restart" }
    }
    StateRow {
        name: "Quiet"
        control: TextButton { text: "Done"; look: TextButton.Quiet }
    }
    StateRow {
        name: "Danger"
        control: TextButton { text: "Delete"; look: TextButton.Danger }
    }
    StateRow {
        name: "Pill"
        control: Pill { text: "Quiz me"; restOpacity: Theme.labelOpacity }
    }
    StateRow {
        name: "Long text"
        cellWidth: Theme.grown(200)
        kinds: ["rest", "focus"]
        control: TextButton { width: 170; text: "What stands here is too long for it" }
    }
    StateRow {
        name: "Long pill"
        cellWidth: Theme.grown(260)
        kinds: ["rest", "focus"]
        control: Pill { widest: 200; text: "What stands here is too long for a line, so it gets more" }
    }
}
