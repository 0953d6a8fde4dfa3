import QtQuick
import Vorq

Grid {
    columns: 3
    columnSpacing: 28
    rowSpacing: 22

    Cell { width: 280; name: "rest"; SearchField { width: 280; placeholderText: "Search chats" } }
    Cell { width: 280; name: "hover"; SearchField { objectName: "want:hover"; width: 280; placeholderText: "Search chats" } }
    Cell { width: 280; name: "focus"; SearchField { objectName: "want:focus"; width: 280; placeholderText: "Search chats" } }
    Cell { width: 280; name: "text"; SearchField { width: 280; text: "photosynthesis" } }
    Cell { width: 280; name: "text with focus"; SearchField { objectName: "want:focus"; width: 280; text: "photosynthesis" } }
    Cell { width: 280; name: "disabled"; SearchField { width: 280; enabled: false; text: "photosynthesis" } }
    Cell { width: 280; name: "long text"; SearchField { width: 280; text: "a search that goes on for longer than the field" } }
    Cell { width: 280; name: "long placeholder"; SearchField { width: 160; placeholderText: "Search all chats and notes" } }
}
