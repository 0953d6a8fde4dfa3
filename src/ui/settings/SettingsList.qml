import QtQuick
import Vorq

// The list of what can be set.
SettingsPage {
    id: list

    // The row that led to a page gets the keyboard back.
    function returnFrom(pane: int, reason: int) {
        const rows = [null, account.profileRow, account.privacyRow, appearance.applicationRow, appearance.panelRow, panel.customizeRow]
        const row = rows[pane] ?? account.profileRow
        row.forceActiveFocus(reason)
    }

    title: qsTr("Settings")
    isInner: false

    AccountGroup {
        id: account
        width: parent.width
    }
    PanelGroup {
        id: panel
        width: parent.width
    }
    AppearanceGroup {
        id: appearance
        width: parent.width
    }
    PermissionsGroup {
        width: parent.width
    }
}
