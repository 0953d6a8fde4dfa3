import QtQuick
import Vorq

Item {
    id: page

    Component.onCompleted: {
        for (const menu of [plain, marked, models, wide])
            menu.open()
        plain.currentIndex = 1
        marked.currentIndex = 3
    }

    Item {
        anchors.left: parent.left
        width: Theme.grown(180) // where the menu stands
        Menu {
            id: plain
            name: "Task"
            MenuEntry { text: "Open" }
            MenuEntry { text: "Duplicate" }
            MenuEntry { text: "Move to Study"; enabled: false }
            MenuRule {}
            MenuEntry { text: "Accessibility"; status: "Enabled" }
            MenuRule {}
            MenuEntry { text: "Delete"; isDanger: true }
        }
    }
    Item {
        anchors.left: parent.left
        width: Theme.grown(180) // where the menu stands
        anchors.leftMargin: Theme.grown(230)
        Menu {
            id: marked
            name: "Look"
            hasMarks: true
            MenuEntry { text: "Light" }
            MenuEntry { text: "Dark"; isMarked: true }
            MenuRule {}
            MenuEntry { text: "Tinted"; isMarked: true }
            MenuEntry { text: "Clear" }
        }
    }
    Item {
        anchors.left: parent.left
        width: Theme.grown(180) // where the menu stands
        anchors.leftMargin: Theme.grown(460)
        Menu {
            id: models
            name: "Model"
            hasMarks: true
            MenuEntry { text: "Auto"; sub: "Best model for each request"; isMarked: true }
            MenuEntry { text: "Quick"; sub: "Everyday questions and chat" }
            MenuEntry { text: "Thorough"; sub: "Long readings and research"; enabled: false }
        }
    }
    Item {
        anchors.left: parent.left
        width: Theme.grown(180) // where the menu stands
        y: Theme.grown(300)
        Menu {
            id: wide
            name: "Long"
            width: 320
            MenuEntry { text: "What can be chosen here takes more words than the menu is wide" }
            MenuEntry { text: "Short"; sub: "But what is said below it does not fit at all, however hard one tries" }
            MenuEntry { text: "With a status, which keeps its room"; status: "Not set" }
        }
    }
}
