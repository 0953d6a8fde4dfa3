import QtQuick
import Vorq

Grid {
    columns: 3
    columnSpacing: 28
    rowSpacing: 22

    Cell { width: 280; name: "rest"; Segmented { name: "Shown"; labels: ["Open", "All", "Done"] } }
    Cell { width: 280; name: "hover, second"; Segmented { objectName: "want:hover:1"; name: "Shown"; labels: ["Open", "All", "Done"] } }
    Cell { width: 280; name: "pressed, third"; Segmented { objectName: "want:pressed:2"; name: "Shown"; labels: ["Open", "All", "Done"] } }
    Cell { width: 280; name: "focus"; Segmented { objectName: "want:focus"; name: "Shown"; labels: ["Open", "All", "Done"] } }
    Cell { width: 280; name: "focus, last"; Segmented { objectName: "want:focus:2"; index: 2; name: "Shown"; labels: ["Open", "All", "Done"] } }
    Cell { width: 280; name: "disabled"; Segmented { enabled: false; name: "Shown"; labels: ["Open", "All", "Done"] } }
    Cell { width: 280; name: "even"; Segmented { isEven: true; index: 1; name: "Glass"; labels: ["Tinted", "Clear"] } }
    Cell { width: 280; name: "icons"; Segmented { name: "Line"; labels: ["Tube", "Arrow"]; icons: ["tube", "arrowCurve"] } }
    Cell { width: 280; name: "icons, even"; Segmented { isEven: true; name: "Theme"; labels: ["Light", "Dark"]; icons: ["sun", "moon"] } }
    Cell { width: 280; name: "long text"; Segmented { width: 280; name: "Long"; labels: ["Everything there is", "What is still open", "Done"] } }
    Cell { width: 280; name: "long text, even"; Segmented { width: 220; isEven: true; name: "Long"; labels: ["Everything there is", "Still open"] } }
}
