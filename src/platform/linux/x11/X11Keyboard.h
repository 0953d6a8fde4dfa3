#pragma once

#include <cstdint>
#include <optional>
#include <vector>

struct xcb_connection_t;

namespace vorq {

/// The keys and modifiers of a keyboard's present layout. An object shows the layout as it was when
/// made.
class X11Keyboard {
  public:
    using KeyCode = std::uint8_t;
    using ModifierMask = std::uint16_t;
    using KeySym = std::uint32_t;

    explicit X11Keyboard(xcb_connection_t* connection);

    /// The keys that type an upper-case Latin letter in the first layout; where that has no such
    /// letter, in any other; else the key at the letter's place on a Latin keyboard.
    [[nodiscard]] std::vector<KeyCode> keysOf(char letter) const;

    /// A key that types a symbol in whatever layout.
    [[nodiscard]] std::optional<KeyCode> keyTyping(KeySym symbol) const;

    /// A key that types and modifies nothing.
    [[nodiscard]] std::optional<KeyCode> keyTypingNothing() const;

    /// The keys that are held to modify others, so not those of locks.
    [[nodiscard]] const std::vector<KeyCode>& modifierKeys() const { return m_modifierKeys; }

    [[nodiscard]] ModifierMask superMask() const { return m_super; }

    /// Every combination of the locks (capitals, numbers, scrolling) that can be on, with none.
    [[nodiscard]] std::vector<ModifierMask> lockStates() const;

  private:
    void readModifiers(xcb_connection_t* connection);
    [[nodiscard]] bool types(KeyCode key, KeySym symbol) const;

    KeyCode m_first = 0;
    std::vector<std::vector<KeySym>> m_symbols; // of each key from the first on
    ModifierMask m_super;
    std::vector<ModifierMask> m_locks;
    std::vector<KeyCode> m_modifierKeys;
};

} // namespace vorq
