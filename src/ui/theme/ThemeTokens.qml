import QtQuick
import Vorq.Native

// All colours, sizes and type of what is drawn in one look. Colours follow what the user chose, at once.
QtObject {
    id: theme

    required property PanelLook look
    readonly property bool dark: look.panelIsDark
    readonly property bool tinted: look.isTinted
    readonly property bool high: look.hasHighContrast

    // From right to left, as the program's language goes. qmllint does not know all of the application.
    readonly property var application: Qt.application
    readonly property bool isMirrored: application?.layoutDirection === Qt.RightToLeft

    function withAlpha(color: color, alpha: real): color {
        return Qt.rgba(color.r, color.g, color.b, alpha)
    }
    function points(pixels: real): real {
        return App.points(pixels * look.textScale)
    }
    // The height of what holds a line of text.
    function grown(height: real): int {
        return Math.round(height * Math.max(1, look.textScale))
    }
    // In high contrast what is read or rimmed has at least 7:1 on its ground.
    readonly property color strongInk: dark ? "#FFFFFF" : "#000000"
    readonly property color strongGround: dark ? "#000000" : "#FFFFFF"
    function strong(own: color, inDark: color, inLight: color): color {
        return high ? (dark ? inDark : inLight) : own
    }
    // A rim or rule, faint unless contrast matters.
    function faint(color: color, alpha: real): color {
        return high ? color : withAlpha(color, alpha)
    }
    function orElse(chosen: color, own: color): color {
        return chosen.valid ? chosen : own
    }

    // On a background of the user's own, what would be lost on it comes nearer to the ink.
    function onGlass(own: color): color {
        return look.background.valid ? HexColors.readable(own, dark ? Qt.tint(look.ground, fieldFill) : look.ground, ink) : own
    }

    // ---- type
    readonly property string sans: "Inter"
    readonly property string display: "Inter Display"
    readonly property string mono: "JetBrains Mono"
    readonly property real displaySize: 19
    readonly property real largeSize: 16
    readonly property real hugeSize: 26
    readonly property real bodySize: 14.5
    readonly property real titleSize: 14 // of a row in a group
    readonly property real rowSize: 13.5
    readonly property real controlSize: 13
    readonly property real metaSize: 12.5
    readonly property real captionSize: 12
    readonly property real badgeSize: 11.5
    readonly property real bubbleLeading: 3
    readonly property real captionLeading: 2
    readonly property real tabStop: 36

    // ---- ink
    readonly property color ink: high ? strongInk : dark ? "#F3F4F8" : "#14161D"
    readonly property color ink2: high ? strongInk : onGlass(dark ? "#BDC1CD" : "#4B5060")
    readonly property color ink3: strong(onGlass(dark ? "#A3A8B6" : "#626879"), "#D0D0D0", "#3A3A3A")
    readonly property real labelOpacity: high || look.background.valid ? 1 : 0.72
    readonly property color inkOff: strong(dark ? "#686C79" : "#A3A8B5", "#A8A8A8", "#4D4D4D")

    // ---- solid surfaces
    readonly property color window: high ? strongGround : dark ? "#17181C" : "#F3F4F7"
    readonly property color surface: high ? strongGround : dark ? "#212329" : "#FFFFFF"
    readonly property color surface2: strong(dark ? "#2A2C34" : "#EEF0F4", "#141414", "#F0F0F0")
    readonly property color surface3: strong(dark ? "#343741" : "#E3E6EC", "#202020", "#E8E8E8")
    readonly property color hairline: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.085) : Qt.rgba(0.05, 0.07, 0.13, 0.10)
    readonly property color hairline2: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.16) : Qt.rgba(0.05, 0.07, 0.13, 0.17)
    readonly property color fieldWell: high ? strongGround : dark ? Qt.rgba(0, 0, 0, 0.22) : "#FFFFFF"

    // ---- states, drawn over whatever lies beneath
    readonly property color hover: strong(dark ? Qt.rgba(1, 1, 1, 0.07) : Qt.rgba(0.05, 0.07, 0.13, 0.05), Qt.rgba(1, 1, 1, 0.20), Qt.rgba(0, 0, 0, 0.14))
    readonly property color pressed: strong(dark ? Qt.rgba(1, 1, 1, 0.13) : Qt.rgba(0.05, 0.07, 0.13, 0.10), Qt.rgba(1, 1, 1, 0.28), Qt.rgba(0, 0, 0, 0.22))
    readonly property color track: high ? strongGround : dark ? Qt.rgba(1, 1, 1, 0.10) : Qt.rgba(0.05, 0.07, 0.13, 0.10)
    readonly property color ring: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.44) : Qt.rgba(0.05, 0.07, 0.13, 0.52)
    readonly property color secondaryFill: withAlpha(ink, dark ? 0.09 : 0.06)
    readonly property color secondaryHover: withAlpha(ink, dark ? 0.14 : 0.10)
    readonly property color secondaryDown: withAlpha(ink, dark ? 0.20 : 0.15)

    // What is chosen among several, on a track.
    readonly property color chosenFill: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.22) : "#FFFFFF"
    readonly property color chosenRim: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.12) : Qt.rgba(0, 0, 0, 0.08)
    readonly property color chosenInk: high ? strongGround : ink
    // Over a page while a sheet is open.
    readonly property color scrim: dark ? Qt.rgba(0, 0, 0, high ? 0.80 : 0.50) : Qt.rgba(0.05, 0.07, 0.13, high ? 0.70 : 0.30)

    // ---- accent, and the second colour of the mark
    readonly property color accent: strong(dark ? "#4A65EA" : "#3F5AE6", "#1F3BB3", "#0B1F8F")
    readonly property color accentHover: strong(dark ? "#4F6AF0" : "#354FD6", "#2B42B8", "#1F3BB3")
    readonly property color accentDown: strong(dark ? "#3E56CF" : "#2B43BF", "#1A33A0", "#0018A8")
    readonly property color accentOn: "#FFFFFF"
    readonly property color accentInk: strong(onGlass(dark ? "#AEBDFF" : "#2E48CC"), "#B9C7FF", "#0B1F8F")
    readonly property color accentSoft: dark ? Qt.rgba(0.42, 0.52, 1, 0.20) : Qt.rgba(0.25, 0.35, 0.90, 0.10)
    readonly property color accentSoft2: dark ? Qt.rgba(0.42, 0.52, 1, 0.27) : Qt.rgba(0.25, 0.35, 0.90, 0.17)
    readonly property color accentRimTop: high ? strongInk : Qt.rgba(1, 1, 1, 0.28)
    readonly property color accentRimBottom: high ? strongInk : Qt.rgba(1, 1, 1, 0.06)
    readonly property color accentOff: high ? inkOff : withAlpha(ink, 0.42)
    readonly property color focus: strong(dark ? "#8EA3FF" : "#3F5AE6", "#FFE04A", "#0018A8")
    readonly property int focusThickness: high ? 3 : 2
    readonly property int ringGap: 2 // between a control and its ring
    readonly property color ember: dark ? "#FF9A5C" : "#F97316"
    readonly property color selection: strong(dark ? Qt.rgba(0.42, 0.52, 1, 0.48) : Qt.rgba(0.25, 0.37, 0.96, 0.24), "#2F48C8", "#AEBBFF")

    // ---- status
    readonly property color ok: strong(dark ? "#62D394" : "#16703D", "#7BE8AD", "#0B4F2A")
    readonly property color okSoft: high ? strongGround : dark ? Qt.rgba(0.30, 0.78, 0.50, 0.17) : Qt.rgba(0.15, 0.62, 0.34, 0.12)
    readonly property color warn: strong(onGlass(dark ? "#FFA65C" : "#A84E08"), "#FFC48A", "#6E3200")
    readonly property color warnSoft: high ? strongGround : dark ? Qt.rgba(1, 0.62, 0.30, 0.16) : Qt.rgba(0.94, 0.50, 0.10, 0.13)
    readonly property color bad: strong(onGlass(dark ? "#FF8A85" : "#BF2B2B"), "#FFB3AF", "#8E1515")
    readonly property color badSoft: high ? strongGround : dark ? Qt.rgba(1, 0.38, 0.36, 0.16) : Qt.rgba(0.84, 0.20, 0.20, 0.10)
    readonly property color badHover: high ? hover : badSoft
    readonly property color badDown: high ? pressed : dark ? Qt.rgba(1, 0.38, 0.36, 0.24) : Qt.rgba(0.84, 0.20, 0.20, 0.17)
    readonly property color lookTile: high ? strongInk : dark ? "#C9A6F2" : "#7A3FB8"
    readonly property color glassTile: high ? strongInk : dark ? "#7FD3D8" : "#126F75"
    readonly property color noteTile: high ? strongInk : dark ? "#FFC46B" : "#9A5B00"
    readonly property color avatarTop: high ? accent : "#7C93FF"
    readonly property color avatarBottom: high ? accent : "#4B62E6"
    readonly property color caseTop: high ? strongGround : dark ? "#3A3E4B" : "#FFFFFF"
    readonly property color caseBottom: high ? strongGround : dark ? "#292C36" : "#EDF0F6"
    readonly property color tapeHook: high ? strongInk : dark ? "#5A6072" : "#9AA0B2"
    readonly property real tileAlpha: dark ? 0.16 : 0.11

    // ---- glass of the panel
    readonly property bool opaque: look.tier === PanelLook.Opaque
    // What is not blurred would be read through the glass.
    readonly property real glassAlpha: look.tier === PanelLook.Blur && !high ? (dark ? 0.84 : 0.82) : 1
    readonly property real glassAlphaStep: 0.01
    readonly property real customTintAlpha: 0.85
    readonly property color glassTopOwn: high ? strongGround : dark ? (tinted ? "#2B2E45" : "#282A32") : (tinted ? "#F4F5FF" : "#FFFFFF")
    readonly property color glassBottomOwn: high ? strongGround : dark ? (tinted ? "#1A1C2B" : "#17181D") : (tinted ? "#E4E7FA" : "#F0F2F6")
    readonly property color glassTop: glassOf(glassTopOwn, look.background, glassAlpha)
    readonly property color glassBottom: glassOf(glassBottomOwn, look.background, Math.min(1, glassAlpha + glassAlphaStep))
    readonly property color glassRimTop: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.30) : Qt.rgba(1, 1, 1, 1)
    readonly property color glassRimBottom: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.10) : Qt.rgba(1, 1, 1, 0.75)
    readonly property color glassHairline: high ? strongInk : dark ? Qt.rgba(0, 0, 0, 0.62) : Qt.rgba(0.06, 0.08, 0.16, 0.26)
    readonly property color glassSpecular: high ? "transparent" : dark ? Qt.rgba(1, 1, 1, 0.065) : Qt.rgba(1, 1, 1, 0.9)
    readonly property color glassWash: high ? "transparent"
                                     : tinted ? (dark ? Qt.rgba(0.42, 0.50, 1, 0.16) : Qt.rgba(0.36, 0.44, 1, 0.10))
                                              : (dark ? Qt.rgba(0.45, 0.52, 0.78, 0.07) : Qt.rgba(0.45, 0.52, 0.80, 0.05))
    readonly property real glassGrain: high ? 0 : dark ? 0.014 : 0.012

    function glassOf(own: color, custom: color, alpha: real): color {
        return withAlpha(custom.valid ? Qt.tint(own, withAlpha(custom, customTintAlpha * custom.a)) : own, alpha)
    }

    // ---- what floats over the panel: denser, one step nearer
    readonly property color floatTop: high ? strongGround : dark ? "#343741" : "#FFFFFF"
    readonly property color floatBottom: high ? strongGround : dark ? "#292B33" : "#F8F9FB"
    readonly property color tipFill: high ? strongGround : dark ? "#383B46" : "#FFFFFF"
    readonly property color floatRimTop: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.24) : Qt.rgba(1, 1, 1, 1)
    readonly property color floatRimBottom: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.08) : Qt.rgba(1, 1, 1, 0.8)
    // A menu is a window of its own, and casts no shadow that would tell it from what lies below.
    readonly property color menuEdge: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.24) : Qt.rgba(0.06, 0.08, 0.16, 0.26)
    readonly property color floatHairline: high ? strongInk : dark ? Qt.rgba(0, 0, 0, 0.55) : Qt.rgba(0.06, 0.08, 0.16, 0.13)

    // ---- the writing tools' card, which is a float over other programs; what is read stands on plates
    readonly property real overlayAlpha: opaque || high ? 1 : look.tier === PanelLook.Blur ? 0.88 : 0.94
    readonly property color overlayTop: withAlpha(floatTop, overlayAlpha)
    readonly property color overlayBottom: withAlpha(floatBottom, overlayAlpha)
    readonly property color plate: high ? strongGround : dark ? "#24262D" : "#F3F4F7"
    readonly property color plateField: high ? strongGround : dark ? "#1C1E23" : "#FFFFFF"

    // ---- blocks of the conversation
    readonly property color userBlock: orElse(look.userBlock, strong(dark ? "#3B4784" : "#DFE5FF", "#1B2666", "#E3E8FF"))
    readonly property real userBlockLift: high ? 1 : dark ? 1.10 : 1.01
    readonly property color userBlockRim: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.13) : Qt.rgba(0.25, 0.35, 0.90, 0.16)
    readonly property color userInk: orElse(look.userInk, high ? strongInk : dark ? "#F6F7FF" : "#161C3E")
    readonly property color botBlock: orElse(look.assistantBlock, high ? strongGround : dark ? Qt.rgba(1, 1, 1, 0.050) : Qt.rgba(1, 1, 1, 0.86))
    readonly property color botBlockRim: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.085) : Qt.rgba(0.06, 0.08, 0.16, 0.085)
    readonly property color botInk: orElse(look.assistantInk, ink)
    readonly property color botLink: look.assistantBlock.valid ? botInk : accentInk
    readonly property color fieldFill: high ? strongGround : dark ? Qt.rgba(1, 1, 1, 0.075) : Qt.rgba(1, 1, 1, 0.96)
    readonly property color fieldRim: high ? strongInk : dark ? Qt.rgba(1, 1, 1, 0.15) : Qt.rgba(0.06, 0.08, 0.16, 0.14)
    readonly property color fieldFocusRim: high ? focus : withAlpha(focus, dark ? 0.75 : 0.85)

    // ---- the pill, in the other theme's colours
    readonly property color pillTop: high ? strongInk : dark ? "#FFFFFF" : "#1B1E28"
    readonly property color pillDown: strong(dark ? "#C9D2F5" : "#333847", "#D0D0D0", "#3A3A3A")
    readonly property color pillBottom: high ? strongInk : dark ? "#E6EAF8" : "#11131A"
    readonly property color pillRimTop: high ? strongGround : dark ? "#FFFFFF" : Qt.rgba(1, 1, 1, 0.22)
    readonly property color pillRimBottom: high ? strongGround : dark ? Qt.rgba(0, 0, 0, 0.10) : Qt.rgba(1, 1, 1, 0.06)
    readonly property color pillHairline: dark ? Qt.rgba(0, 0, 0, 0.30) : "transparent"
    readonly property color pillIcon: high ? strongGround : dark ? "#2E48CC" : "#A3B5FF"
    readonly property color pillInk: high ? strongGround : dark ? "#14161D" : "#FFFFFF"

    // ---- spacing
    readonly property int space1: 4
    readonly property int space2: 8
    readonly property int space3: 12
    readonly property int space4: 16
    readonly property int space5: 20
    readonly property int space6: 24

    // ---- radii; what lies in something else has its radius less the gap
    readonly property int radiusPanel: 34
    readonly property int radiusSheet: 26
    readonly property int radiusComposer: 22
    readonly property int radiusBlock: 20
    readonly property int radiusCard: 16
    readonly property int radiusRow: 14
    readonly property int radiusTile: 11
    readonly property int radiusControl: 10
    readonly property int radiusMenu: 12
    readonly property int radiusCode: 8
    readonly property real smoothing: 0.6

    // ---- shadows: layers of "dy,blur,alpha"
    readonly property real shadowStrength: high ? 0 : dark ? 1.0 : 0.44
    readonly property var shadowLayers: [[[1, 3, 0.30], [0, 1, 0.20]],
                                         [[6, 18, 0.34], [1, 3, 0.26]],
                                         [[14, 40, 0.44], [2, 8, 0.26]],
                                         [[24, 72, 0.52], [4, 14, 0.26]]]
    readonly property var shadowMargins: [6, 24, 48, 84]
    function shadow(level: int): string {
        return shadowLayers[level - 1].map(layer => layer[0] + "," + layer[1] + ","
                                                    + (layer[2] * shadowStrength).toFixed(3)).join("/")
    }
    function shadowMargin(level: int): int {
        return shadowMargins[level - 1]
    }
}
