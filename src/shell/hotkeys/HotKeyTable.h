#pragma once

#include "platform/GlobalHotKeys.h"

#include <QString>

#include <array>

namespace vorq {

enum class HotKeyAction { Panel, SaveNote, PushNote, ClearChat, Rewrite };

/// One hot key of Vorq.
struct HotKeyEntry {
    HotKeyAction action;
    HotKeyChord chord;
    HotKeyId id;
    const char* kind; ///< as the log calls it
    const char* verb; ///< the command that does the same
};

/// The four characters "VORQ".
inline constexpr std::uint32_t hotKeySignature = 0x564f5251;

inline constexpr std::uint32_t hotKeyModifiers = HotKeyModifier::command + HotKeyModifier::shift;

/// In the order in which they are registered.
inline constexpr std::array hotKeyTable = {
    HotKeyEntry{HotKeyAction::Panel,
                {'A', 0, hotKeyModifiers},
                {hotKeySignature, 1},
                "hotkey",
                "vorq summon"},
    HotKeyEntry{HotKeyAction::SaveNote,
                {'S', 1, hotKeyModifiers},
                {hotKeySignature, 2},
                "note hotkey",
                "vorq note"},
    HotKeyEntry{HotKeyAction::PushNote,
                {'P', 35, hotKeyModifiers},
                {hotKeySignature, 4},
                "push-note hotkey",
                "vorq push-note"},
    HotKeyEntry{HotKeyAction::ClearChat,
                {'T', 17, hotKeyModifiers},
                {hotKeySignature, 3},
                "clear-chat hotkey",
                "vorq clear"},
    HotKeyEntry{HotKeyAction::Rewrite,
                {'W', 13, hotKeyModifiers},
                {hotKeySignature, 5},
                "rewrite hotkey",
                "vorq rewrite"},
};

/// What the chord is called where there is no command key.
[[nodiscard]] inline QString keysOf(const HotKeyEntry& entry) {
    return QStringLiteral("Super+Shift+") + QLatin1Char(entry.chord.letter);
}

} // namespace vorq
