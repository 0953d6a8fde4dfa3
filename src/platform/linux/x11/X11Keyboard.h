#pragma once

#include <cstdint>
#include <vector>

struct xcb_connection_t;

namespace vorq {

/// The keys and modifiers of a keyboard's present layout, for passive grabs. An object shows the
/// layout as it was when made.
class X11Keyboard {
  public:
    using KeyCode = std::uint8_t;
    using ModifierMask = std::uint16_t;

    explicit X11Keyboard(xcb_connection_t* connection);

    /// The keys that type an upper-case Latin letter in the first layout; where that has no such
    /// letter, in any other; else the key at the letter's place on a Latin keyboard.
    [[nodiscard]] std::vector<KeyCode> keysOf(char letter) const;

    [[nodiscard]] ModifierMask superMask() const { return m_super; }

    /// Every combination of the locks (capitals, numbers, scrolling) that can be on, with none.
    [[nodiscard]] std::vector<ModifierMask> lockStates() const;

  private:
    using KeySym = std::uint32_t;

    void readModifiers(xcb_connection_t* connection);
    [[nodiscard]] bool types(KeyCode key, KeySym symbol) const;

    KeyCode m_first = 0;
    std::vector<std::vector<KeySym>> m_symbols; // of each key from the first on
    ModifierMask m_super;
    std::vector<ModifierMask> m_locks;
};

} // namespace vorq
