import QtQuick
import Vorq

Column {
    spacing: 24

    Component.onCompleted: {
        plain.show("Moved to Study")
        focused.show("Moved to Study")
        told.show("Copied")
        wide.show("“Leaf optics of the shade, and what it has to do with the green gap” was deleted from your library")
    }

    Cell { width: 700; name: "rest"; Toast { id: plain } }
    Cell { width: 700; name: "focus"; Toast { id: focused; objectName: "want:focus" } }
    Cell { width: 700; name: "nothing to undo"; Toast { id: told; action: "" } }
    Cell { width: 700; name: "long text"; Toast { id: wide } }
}
