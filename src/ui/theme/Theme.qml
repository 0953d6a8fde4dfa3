pragma Singleton
import QtQuick
import Vorq
import Vorq.Native

// All colours, sizes and type of the pages.
ThemeTokens {
    look: App.look
}
