import QtQuick
import Vorq
import Vorq.Native

// The window of the settings, and of the Hub once that is open.
Rectangle {
    id: view

    readonly property SettingsViewModel settings: App.settings
    readonly property SettingsNavigation navigation: settings.navigation
    readonly property int tapeRoom: 68
    readonly property int plainRoom: 16
    readonly property int toastRoom: 24
    readonly property list<Component> panes: [list, profile, privacy, appearance, panelLook, customize]
    readonly property Component wanted: navigation.selectedTab === SettingsNavigation.SetupTab.Library ? hub
                                      : navigation.settingsPane === SettingsNavigation.SettingsPane.List && !navigation.isSignedIn ? signIn
                                      : panes[navigation.settingsPane]
    readonly property Item holder: Window.activeFocusItem // of the keyboard
    property bool hadRing: false // what had it last
    property int formerPane: 0

    function goBack() {
        hadRing = true
        navigation.back()
    }
    function handKeyboard(page: Item) {
        const reason = hadRing ? Qt.TabFocusReason : Qt.OtherFocusReason
        if (page instanceof SettingsList || page instanceof SignInView)
            page.returnFrom(formerPane, reason)
        else
            page.takeKeyboard(reason)
        formerPane = navigation.settingsPane
    }

    width: 1120
    height: 800
    color: Theme.window
    LayoutMirroring.enabled: Theme.isMirrored
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Settings")
    onHolderChanged: if (holder instanceof Control) hadRing = holder.visualFocus
    Keys.onEscapePressed: goBack()
    Keys.onPressed: event => {
        event.accepted = event.matches(StandardKey.Back)
        if (event.accepted)
            goBack()
    }

    Shortcut {
        sequence: "Ctrl+W"
        onActivated: view.navigation.requestClose()
    }
    HubTape {
        id: tape
        x: Theme.space5
        y: 14
        width: Math.min(implicitWidth, view.width - 2 * Theme.space5)
        visible: view.navigation.hasHub
        expanded: view.navigation.hubTapeExpanded
        current: view.navigation.hubSegment
        settingsActive: view.navigation.selectedTab === SettingsNavigation.SetupTab.Settings
        onSelected: segment => view.navigation.showHub(segment)
        onSettingsSelected: view.navigation.showSettings()
        onToggled: view.navigation.hubTapeExpanded = !expanded
    }
    Loader {
        id: page
        anchors.fill: parent
        anchors.topMargin: tape.visible ? view.tapeRoom : view.plainRoom
        focus: true
        sourceComponent: view.wanted
        onLoaded: view.handKeyboard(item as Item)
    }
    Toast {
        id: toast
        anchors.horizontalCenter: parent.horizontalCenter
        y: parent.height - height - view.toastRoom

        function tell(words: string, undo: string) {
            action = undo
            show(words)
        }
        onUndone: view.settings.appearance.undoReset()
    }
    Sheet {
        id: question
        title: qsTr("Discard your changes?")
        text: qsTr("What you have entered here is not saved.")
        acceptText: qsTr("Discard")
        rejectText: qsTr("Keep editing")
        isDanger: true
        onAccepted: view.navigation.discard()
        onRejected: view.navigation.keep()
    }

    Connections {
        target: view.navigation
        function onChanged() {
            if (view.navigation.asksToDiscard)
                question.open()
            else
                question.close()
        }
    }
    Connections {
        target: view.settings.profile
        function onSaved() {
            toast.tell(qsTr("Profile saved."), "")
        }
    }
    Connections {
        target: view.settings.privacy
        function onSaved() {
            toast.tell(qsTr("Privacy settings saved."), "")
        }
    }
    Connections {
        target: view.settings.appearance
        function onColorsReset() {
            toast.tell(qsTr("The colors of the theme are back."), qsTr("Undo"))
        }
    }
    Connections {
        target: view.settings.account
        function onSignedOut() {
            toast.tell(qsTr("You are signed out."), "")
        }
    }

    Component {
        id: list
        SettingsList {}
    }
    Component {
        id: signIn
        SignInView {}
    }
    Component {
        id: profile
        ProfilePage {}
    }
    Component {
        id: privacy
        PrivacyPage {}
    }
    Component {
        id: appearance
        AppearancePage {}
    }
    Component {
        id: panelLook
        PanelLookPage {}
    }
    Component {
        id: customize
        CustomizePage {}
    }
    Component {
        id: hub
        HubPage {
            segment: App.settings.navigation.hubSegment
        }
    }
}
