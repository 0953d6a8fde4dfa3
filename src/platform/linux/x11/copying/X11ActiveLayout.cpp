#include "platform/linux/x11/copying/X11ActiveLayout.h"

#include <algorithm>

#include <xkbcommon/xkbcommon-x11.h>

namespace vorq {
namespace {

template<auto release>
struct Releaser {
    void operator()(auto* object) const { release(object); }
};
using XkbContext = std::unique_ptr<xkb_context, Releaser<xkb_context_unref>>;
using XkbKeymap = std::unique_ptr<xkb_keymap, Releaser<xkb_keymap_unref>>;

// An object that is made of another one keeps that alive.
xkb_state* stateOf(xcb_connection_t* connection) {
    const int isThere = xkb_x11_setup_xkb_extension(
        connection, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
        XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
    const std::int32_t keyboard =
        isThere == 0 ? -1 : xkb_x11_get_core_keyboard_device_id(connection);
    if (keyboard < 0) return nullptr;
    const XkbContext context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    if (!context) return nullptr;
    const XkbKeymap keymap(xkb_x11_keymap_new_from_device(context.get(), connection, keyboard,
                                                          XKB_KEYMAP_COMPILE_NO_FLAGS));
    return keymap ? xkb_x11_state_new_from_device(keymap.get(), connection, keyboard) : nullptr;
}

bool typesFirst(xkb_state* state, xkb_keycode_t key, xkb_keysym_t symbol) {
    const xkb_layout_index_t layout = xkb_state_key_get_layout(state, key);
    if (layout == XKB_LAYOUT_INVALID) return false;
    const xkb_keysym_t* symbols = nullptr;
    const int count =
        xkb_keymap_key_get_syms_by_level(xkb_state_get_keymap(state), key, layout, 0, &symbols);
    return count == 1 && *symbols == symbol;
}

} // namespace

void X11ActiveLayout::Release::operator()(xkb_state* state) const {
    xkb_state_unref(state);
}

X11ActiveLayout::X11ActiveLayout(xcb_connection_t* connection) : m_state(stateOf(connection)) {}

std::optional<X11ActiveLayout::KeyCode> X11ActiveLayout::keyOf(char letter) const {
    if (!m_state) return std::nullopt;
    const auto symbol = static_cast<xkb_keysym_t>(letter - 'A' + 'a');
    xkb_keymap* keymap = xkb_state_get_keymap(m_state.get());
    // A server that is asked over X11 has no keys beyond.
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap), UINT8_MAX);
    for (xkb_keycode_t key = xkb_keymap_min_keycode(keymap); key <= last; ++key)
        if (typesFirst(m_state.get(), key, symbol)) return static_cast<KeyCode>(key);
    return std::nullopt;
}

} // namespace vorq
