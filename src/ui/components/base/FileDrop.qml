import QtQuick
import Vorq.Native

// Where files can be dropped, or a picture that another program hands over without a file.
DropArea {
    id: area

    // Of the formats that are offered, the one to take a picture in; "" for none.
    required property var pictureFormat

    // Other addresses are given only where there are no files.
    signal filesDropped(files: var)
    signal pictureDropped(picture: var, addresses: var)

    // Whoever drags deletes what was moved. So this copies, whatever was proposed.
    onEntered: drag => {
        const isWanted = drag.hasUrls || pictureFormat(drag.formats) !== ""
        if (isWanted && (drag.supportedActions & Qt.CopyAction))
            drag.accept(Qt.CopyAction)
        else
            drag.accepted = false
    }
    onPositionChanged: drag => drag.accept(Qt.CopyAction)
    onDropped: drop => {
        const files = drop.urls.filter(url => url.toString().startsWith("file:"))
        const format = files.length > 0 ? "" : pictureFormat(drop.formats)
        if (format !== "")
            pictureDropped(drop.getDataAsArrayBuffer(format), drop.urls)
        else
            filesDropped(files.length > 0 ? files : drop.urls)
        drop.accept(Qt.CopyAction)
    }

    DropCopies {}
}
