import QtQuick
import Vorq

Column {
    spacing: 24

    component Clip: AttachmentClip {
        detail: label
        isLoading: false
        hasFailed: false
        reason: ""
    }

    Cell {
        width: 700
        name: "ready"

        Row {
            spacing: 8

            Clip { kind: "doc"; label: "leaf-optics.md" }
            Clip { kind: "photo"; label: "leaf.png" }
            Clip { kind: "note"; label: "Notes"; detail: "Leaf optics" }
            Clip { kind: "deepen"; label: "steady output in noisy light" }
        }
    }
    Cell {
        width: 700
        name: "focus"
        Clip { kind: "doc"; label: "leaf-optics.md"; objectName: "want:focus" }
    }
    Cell {
        width: 700
        name: "long name"
        Clip { kind: "doc"; label: "Slides of the whole semester with all of its pictures.pptx" }
    }
    Cell {
        width: 700
        name: "loading"

        Row {
            spacing: 8

            Clip { kind: "doc"; label: "leaf-optics.pdf"; isLoading: true }
            Clip { kind: "photo"; label: "leaf.heic"; isLoading: true }
        }
    }
    Cell {
        width: 700
        name: "failed"

        Column {
            spacing: 8

            Clip { kind: "doc"; label: "leaf-optics.pdf"; hasFailed: true; reason: "the file is locked with a password." }
            Clip {
                kind: "doc"
                label: "Slides of the whole semester with all of its pictures.pptx"
                    hasFailed: true
                reason: "the file holds more than is sensible once it is unpacked, and was left alone for that. Export it as PDF, or attach the part that matters."
            }
        }
    }
}
