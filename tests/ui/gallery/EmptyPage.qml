import QtQuick
import Vorq

Row {
    spacing: 40

    EmptyState { width: 280; iconName: "note"; title: "No notes yet"; sub: "Save a chat to Notes, or begin one here."; action: "New note" }
    EmptyState { width: 260; iconName: "search"; title: "Nothing found"; sub: "Try fewer or other words." }
    EmptyState {
        width: 260
        iconName: "tasks"
        title: "A title that takes more than a line to say what is missing"
        sub: "And a sentence below it that goes on for a while, as sentences do when somebody explains what to do about it."
        action: "Do something about it that is long to say"
    }
}
