#include "platform/linux/x11/X11Keyboard.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace vorq {
namespace {

constexpr std::uint32_t scrollLock = 0xff14;
constexpr std::uint32_t numLock = 0xff7f;
constexpr std::uint32_t leftSuper = 0xffeb;
constexpr std::uint32_t rightSuper = 0xffec;

// Where a letter stands on a Latin keyboard, as all current X servers number its keys.
std::optional<X11Keyboard::KeyCode> latinPlace(char letter) {
    constexpr std::pair<const char*, int> rows[] = {
        {"QWERTYUIOP", 24}, {"ASDFGHJKL", 38}, {"ZXCVBNM", 52}};
    for (const auto& [letters, first] : rows)
        for (int place = 0; letters[place] != '\0'; ++place)
            if (letters[place] == letter) return static_cast<X11Keyboard::KeyCode>(first + place);
    return std::nullopt;
}

} // namespace

X11Keyboard::X11Keyboard(xcb_connection_t* connection) : m_super(XCB_MOD_MASK_4) {
    m_locks = {XCB_MOD_MASK_LOCK};
    const xcb_setup_t* setup = xcb_get_setup(connection);
    m_first = setup->min_keycode;
    const auto count = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const xcb_get_keyboard_mapping_cookie_t cookie =
        xcb_get_keyboard_mapping(connection, m_first, count);
    const X11Reply<xcb_get_keyboard_mapping_reply_t> reply(
        xcb_get_keyboard_mapping_reply(connection, cookie, nullptr));
    if (!reply) return;
    const xcb_keysym_t* symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    for (int key = 0; key < count; ++key, symbols += reply->keysyms_per_keycode)
        m_symbols.emplace_back(symbols, symbols + reply->keysyms_per_keycode);
    readModifiers(connection);
}

void X11Keyboard::readModifiers(xcb_connection_t* connection) {
    const xcb_get_modifier_mapping_cookie_t cookie = xcb_get_modifier_mapping(connection);
    const X11Reply<xcb_get_modifier_mapping_reply_t> reply(
        xcb_get_modifier_mapping_reply(connection, cookie, nullptr));
    if (!reply) return;
    const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(reply.get());
    const auto maskOf = [&](KeySym symbol) -> ModifierMask {
        for (int index = 0; index < 8 * reply->keycodes_per_modifier; ++index)
            if (keys[index] != 0 && types(keys[index], symbol))
                return static_cast<ModifierMask>(1 << (index / reply->keycodes_per_modifier));
        return 0;
    };
    for (const KeySym symbol : {rightSuper, leftSuper})
        if (const ModifierMask mask = maskOf(symbol)) m_super = mask;
    for (const KeySym symbol : {numLock, scrollLock}) {
        const ModifierMask mask = maskOf(symbol);
        const bool isNew = std::ranges::find(m_locks, mask) == m_locks.end();
        if (mask != 0 && mask != m_super && isNew) m_locks.push_back(mask);
    }
    for (int index = 0; index < 8 * reply->keycodes_per_modifier; ++index) {
        const auto mask = static_cast<ModifierMask>(1 << (index / reply->keycodes_per_modifier));
        if (keys[index] != 0 && std::ranges::find(m_locks, mask) == m_locks.end())
            m_modifierKeys.push_back(keys[index]);
    }
}

bool X11Keyboard::types(KeyCode key, KeySym symbol) const {
    const auto index = static_cast<std::size_t>(key - m_first);
    return key >= m_first && index < m_symbols.size() &&
           std::ranges::find(m_symbols[index], symbol) != m_symbols[index].end();
}

std::vector<X11Keyboard::KeyCode> X11Keyboard::keysOf(char letter) const {
    const auto symbol = static_cast<KeySym>(letter - 'A' + 'a');
    std::vector<KeyCode> inFirstLayout;
    std::vector<KeyCode> anywhere;
    for (std::size_t index = 0; index < m_symbols.size(); ++index) {
        const auto key = static_cast<KeyCode>(m_first + index);
        if (!m_symbols[index].empty() && m_symbols[index].front() == symbol)
            inFirstLayout.push_back(key);
        if (types(key, symbol)) anywhere.push_back(key);
    }
    if (!inFirstLayout.empty()) return inFirstLayout;
    if (!anywhere.empty()) return anywhere;
    const std::optional<KeyCode> place = latinPlace(letter);
    return place ? std::vector{*place} : std::vector<KeyCode>{};
}

std::optional<X11Keyboard::KeyCode> X11Keyboard::keyTyping(KeySym symbol) const {
    for (std::size_t index = 0; index < m_symbols.size(); ++index) {
        const auto key = static_cast<KeyCode>(m_first + index);
        if (types(key, symbol)) return key;
    }
    return std::nullopt;
}

std::optional<X11Keyboard::KeyCode> X11Keyboard::keyTypingNothing() const {
    for (std::size_t index = 0; index < m_symbols.size(); ++index) {
        const auto key = static_cast<KeyCode>(m_first + index);
        const bool isSilent =
            std::ranges::all_of(m_symbols[index], [](KeySym symbol) { return symbol == 0; });
        if (isSilent && std::ranges::find(m_modifierKeys, key) == m_modifierKeys.end()) return key;
    }
    return std::nullopt;
}

std::vector<X11Keyboard::ModifierMask> X11Keyboard::lockStates() const {
    std::vector<ModifierMask> states{0};
    for (const ModifierMask lock : m_locks) {
        const std::size_t count = states.size();
        for (std::size_t index = 0; index < count; ++index)
            states.push_back(states[index] | lock);
    }
    return states;
}

} // namespace vorq
