#include "platform/linux/x11/copying/X11KeyPoster.h"

#include "platform/linux/x11/X11RawInput.h"
#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/copying/X11ActiveLayout.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <ranges>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr X11Keyboard::KeySym leftControl = 0xffe3;
constexpr X11Keyboard::KeySym leftShift = 0xffe1;
constexpr X11Keyboard::KeySym insertKey = 0xff63;
constexpr X11Keyboard::KeySym leftSuper = 0xffeb;

bool offersTestExtension(const X11Connection& x11) {
    if (!x11.isUsable()) return false;
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(x11.get(), &xcb_test_id);
    return extension != nullptr && extension->present != 0;
}

// Programs take a chord by the letter of the active layout. Where that has no Latin letters, they
// look into the others.
std::optional<X11Keyboard::KeyCode> keyOfLetter(char letter, const X11Keyboard& keyboard,
                                                const X11ActiveLayout& layout) {
    if (const auto key = layout.keyOf(letter)) return key;
    const auto keys = keyboard.keysOf(letter);
    return keys.empty() ? std::nullopt : std::optional(keys.front());
}

std::optional<X11Keyboard::KeyCode> keyOfChord(KeyChord::Key key, const X11Keyboard& keyboard,
                                               const X11ActiveLayout& layout) {
    switch (key) {
    case KeyChord::Key::C:
        return keyOfLetter('C', keyboard, layout);
    case KeyChord::Key::V:
        return keyOfLetter('V', keyboard, layout);
    case KeyChord::Key::Z:
        return keyOfLetter('Z', keyboard, layout);
    case KeyChord::Key::Insert:
        return keyboard.keyTyping(insertKey);
    }
    return std::nullopt;
}

// While it is held, nobody else's requests are dealt with.
class HeldServer {
  public:
    explicit HeldServer(const X11Connection& x11) : m_x11(x11) { xcb_grab_server(m_x11.get()); }
    HeldServer(const HeldServer&) = delete;
    HeldServer& operator=(const HeldServer&) = delete;
    ~HeldServer() {
        xcb_ungrab_server(m_x11.get());
        xcb_flush(m_x11.get());
    }

  private:
    const X11Connection& m_x11;
};

} // namespace

X11KeyPoster::X11KeyPoster()
    : m_canPress(offersTestExtension(m_x11)),
      m_seesPresses(m_x11.isUsable() && rawInputOpcode(m_x11) != 0) {}

PortSupport X11KeyPoster::supported() const {
    if (!m_x11.isUsable()) return std::unexpected(u"No X server answers."_s);
    if (m_canPress) return {};
    return std::unexpected(u"The X server lets no program press keys."_s);
}

std::uint32_t X11KeyPoster::heldModifiers() const {
    if (!m_x11.isUsable()) return 0;
    const X11Reply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        m_x11.get(), xcb_query_pointer(m_x11.get(), m_x11.root()), nullptr));
    if (!reply) return 0;
    const X11Keyboard::ModifierMask super = X11Keyboard(m_x11.get()).superMask();
    std::uint32_t held = 0;
    if ((reply->mask & XCB_KEY_BUT_MASK_SHIFT) != 0) held |= HeldModifier::shift;
    if ((reply->mask & XCB_KEY_BUT_MASK_CONTROL) != 0) held |= HeldModifier::control;
    if ((reply->mask & XCB_KEY_BUT_MASK_MOD_1) != 0) held |= HeldModifier::option;
    if ((reply->mask & super) != 0) held |= HeldModifier::command;
    return held;
}

bool X11KeyPoster::hasKeyboard(ProcessId process) const {
    const X11Reply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(m_x11.get(), xcb_get_input_focus(m_x11.get()), nullptr));
    // The lowest numbers stand for no window and for the one below the pointer.
    return focus && focus->focus > XCB_INPUT_FOCUS_POINTER_ROOT &&
           m_x11.processOf(focus->focus) == process;
}

// The key itself is the last. Empty if the layout lacks one of them.
X11KeyPoster::KeyCodes X11KeyPoster::keysOf(KeyChord chord, const X11Keyboard& keyboard) const {
    std::vector<std::optional<KeyCode>> wanted{keyboard.keyTyping(leftControl)};
    if (chord.hasShift) wanted.push_back(keyboard.keyTyping(leftShift));
    wanted.push_back(keyOfChord(chord.key, keyboard, X11ActiveLayout(m_x11.get())));
    KeyCodes keys;
    for (const std::optional<KeyCode>& key : wanted) {
        if (!key) return {};
        keys.push_back(*key);
    }
    return keys;
}

X11KeyPoster::KeyCodes X11KeyPoster::keysOf(const HotKeyChord& chord, const X11Keyboard& keyboard) {
    std::vector<std::optional<KeyCode>> wanted;
    if ((chord.modifiers & HotKeyModifier::command) != 0)
        wanted.push_back(keyboard.keyTyping(leftSuper));
    if ((chord.modifiers & HotKeyModifier::shift) != 0)
        wanted.push_back(keyboard.keyTyping(leftShift));
    const KeyCodes letters = keyboard.keysOf(chord.letter);
    wanted.push_back(letters.empty() ? std::nullopt : std::optional(letters.front()));
    KeyCodes keys;
    for (const std::optional<KeyCode>& key : wanted) {
        if (!key) return {};
        keys.push_back(*key);
    }
    return keys;
}

X11KeyPoster::KeyCodes X11KeyPoster::heldOf(const KeyCodes& keys) const {
    const X11Reply<xcb_query_keymap_reply_t> map(
        xcb_query_keymap_reply(m_x11.get(), xcb_query_keymap(m_x11.get()), nullptr));
    KeyCodes held;
    for (const KeyCode key : keys)
        if (map && (map->keys[key / 8] & (1 << (key % 8))) != 0) held.push_back(key);
    return held;
}

void X11KeyPoster::press(KeyCode key) const {
    xcb_test_fake_input(m_x11.get(), XCB_KEY_PRESS, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

void X11KeyPoster::release(KeyCode key) const {
    xcb_test_fake_input(m_x11.get(), XCB_KEY_RELEASE, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
}

// The server has dealt with all that was asked of it.
void X11KeyPoster::settle() const {
    const X11Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(m_x11.get(), xcb_get_input_focus(m_x11.get()), nullptr));
}

// Super that goes down and up with no key between opens the overview of many desktops, and Alt the
// menu of many programs; so one is pressed that types nothing.
void X11KeyPoster::pressSilently(const X11Keyboard& keyboard) const {
    const std::optional<KeyCode> silent = keyboard.keyTypingNothing();
    if (!silent) return;
    press(*silent);
    release(*silent);
}

void X11KeyPoster::lift(const KeyCodes& held, const X11Keyboard& keyboard) const {
    if (held.empty()) return;
    pressSilently(keyboard);
    std::ranges::for_each(held, [this](KeyCode key) { release(key); });
}

void X11KeyPoster::putBack(const KeyCodes& lifted, const X11Keyboard& keyboard) const {
    if (lifted.empty()) return;
    std::ranges::for_each(lifted, [this](KeyCode key) { press(key); });
    pressSilently(keyboard);
}

bool X11KeyPoster::post(KeyChord chord, ProcessId target) {
    if (!supported()) return false;
    const X11Keyboard keyboard(m_x11.get());
    return type(keysOf(chord, keyboard), keyboard, target);
}

bool X11KeyPoster::press(const HotKeyChord& chord, ProcessId target) {
    if (!supported()) return false;
    const X11Keyboard keyboard(m_x11.get());
    return type(keysOf(chord, keyboard), keyboard, target);
}

// The last of the keys is the one that the others modify.
bool X11KeyPoster::type(const KeyCodes& keys, const X11Keyboard& keyboard, ProcessId target) {
    if (keys.empty()) return false;
    {
        // The window that has the keyboard must still have it when the keys come.
        const HeldServer held(m_x11);
        if (!hasKeyboard(target)) return false;
        const KeyCodes lifted = heldOf(keyboard.modifierKeys());
        lift(lifted, keyboard);
        // A letter that is held down is pressed by nobody a second time.
        for (const KeyCode key : heldOf({keys.back()}))
            release(key);
        std::ranges::for_each(keys, [this](KeyCode key) { press(key); });
        for (const KeyCode key : keys | std::views::reverse)
            release(key);
        putBack(lifted, keyboard);
    }
    settle();
    m_watch = std::make_unique<X11InputWatch>();
    return true;
}

bool X11KeyPoster::wasUsedSincePost() {
    return !m_seesPresses || !m_watch || m_watch->wasUsed();
}

} // namespace vorq
