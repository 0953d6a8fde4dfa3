#include "platform/linux/x11/X11HotKeys.h"

#include "platform/linux/desktop/SessionKind.h"
#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int allModifiers = 0xff;

// Raw releases of keys, which tell a second press from one that repeats by itself.
bool offersRawEvents(xcb_connection_t* connection) {
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection, &xcb_input_id);
    if (extension == nullptr || extension->present == 0) return false;
    const xcb_input_xi_query_version_cookie_t cookie = xcb_input_xi_query_version(connection, 2, 2);
    const X11Reply<xcb_input_xi_query_version_reply_t> reply(
        xcb_input_xi_query_version_reply(connection, cookie, nullptr));
    return reply && reply->major_version >= 2;
}

template<typename Set>
Set without(const Set& all, const Set& some) {
    Set rest;
    std::ranges::set_difference(all, some, std::inserter(rest, rest.end()));
    return rest;
}

} // namespace

X11HotKeys::X11HotKeys(QObject* parent) : GlobalHotKeys(parent) {}

X11HotKeys::~X11HotKeys() = default;

PortSupport X11HotKeys::supported() const {
    if (sessionKind() == SessionKind::Wayland)
        return std::unexpected(u"Wayland keeps hot keys to the desktop."_s);
    if (!m_connection.isUsable()) return std::unexpected(u"No X server answers."_s);
    return {};
}

GlobalHotKeys::Outcome X11HotKeys::installEventHandler() {
    if (!supported()) return std::unexpected(HotKeyFailure{.status = noServer});
    m_knowsReleases = offersRawEvents(m_connection.get());
    m_keyboard = std::make_unique<X11Keyboard>(m_connection.get());
    const int descriptor = xcb_get_file_descriptor(m_connection.get());
    m_notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11HotKeys::takeEvents);
    return {};
}

GlobalHotKeys::Outcome X11HotKeys::registerHotKey(const HotKeyChord& chord, HotKeyId id) {
    if (!m_keyboard) return std::unexpected(HotKeyFailure{.status = noServer});
    remove(id);
    m_hotKeys.push_back({.id = id, .chord = chord, .grips = {}});
    return grab(m_hotKeys.back());
}

// What was held when the last hot key went would be kept from others for as long as this process
// lives.
void X11HotKeys::unregisterHotKey(HotKeyId id) {
    remove(id);
    if (m_hotKeys.empty()) dropGuards();
}

void X11HotKeys::remove(HotKeyId id) {
    const auto found = std::ranges::find(m_hotKeys, id, &HotKey::id);
    if (found == m_hotKeys.end()) return;
    ungrab(found->grips);
    m_hotKeys.erase(found);
    takeEventsLater();
}

X11HotKeys::ModifierMask X11HotKeys::modifiersOf(const HotKeyChord& chord) const {
    ModifierMask modifiers = 0;
    if ((chord.modifiers & HotKeyModifier::command) != 0) modifiers |= m_keyboard->superMask();
    if ((chord.modifiers & HotKeyModifier::shift) != 0) modifiers |= XCB_MOD_MASK_SHIFT;
    return modifiers;
}

X11HotKeys::Grips X11HotKeys::gripsFor(const HotKeyChord& chord) const {
    const ModifierMask modifiers = modifiersOf(chord);
    Grips grips;
    for (const KeyCode key : m_keyboard->keysOf(chord.letter))
        for (const ModifierMask locks : m_keyboard->lockStates())
            grips.insert({.key = key, .modifiers = static_cast<ModifierMask>(modifiers | locks)});
    return grips;
}

X11HotKeys::Grips X11HotKeys::guardsFor(KeyCode key, const HotKeyChord& chord) const {
    const ModifierMask all = modifiersOf(chord);
    Grips guards;
    for (ModifierMask left = 0; left < all; ++left) {
        if ((left & ~all) != 0) continue;
        for (const ModifierMask locks : m_keyboard->lockStates())
            guards.insert({.key = key, .modifiers = static_cast<ModifierMask>(left | locks)});
    }
    return without(guards, allGrips());
}

X11HotKeys::Grips X11HotKeys::allGrips() const {
    Grips all;
    for (const HotKey& hotKey : m_hotKeys)
        all.insert(hotKey.grips.begin(), hotKey.grips.end());
    return all;
}

GlobalHotKeys::Outcome X11HotKeys::grab(HotKey& hotKey) {
    const Grips wanted = gripsFor(hotKey.chord);
    ungrab(without(hotKey.grips, wanted));
    const Outcome outcome = wanted.empty() ? std::unexpected(HotKeyFailure{.status = noServer})
                                           : grabAll(without(wanted, hotKey.grips));
    if (!outcome) ungrab(wanted);
    hotKey.grips = outcome ? wanted : Grips();
    hotKey.isAvailable = outcome.has_value();
    takeEventsLater();
    return outcome;
}

// All requests first, so that the answers are waited for once.
GlobalHotKeys::Outcome X11HotKeys::grabAll(const Grips& grips) {
    std::vector<xcb_void_cookie_t> cookies;
    for (const Grip& grip : grips)
        cookies.push_back(xcb_grab_key_checked(m_connection.get(), 0, m_connection.root(),
                                               grip.modifiers, grip.key, XCB_GRAB_MODE_ASYNC,
                                               XCB_GRAB_MODE_ASYNC));
    std::optional<int> status;
    for (const xcb_void_cookie_t cookie : cookies) {
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(m_connection.get(), cookie));
        if (error && !status) status = error->error_code;
    }
    if (!m_connection.isUsable()) status = noServer;
    if (!status) return {};
    return std::unexpected(HotKeyFailure{.status = *status, .isTaken = *status == XCB_ACCESS});
}

void X11HotKeys::ungrab(const Grips& grips) {
    for (const Grip& grip : grips)
        xcb_ungrab_key(m_connection.get(), grip.key, m_connection.root(), grip.modifiers);
    xcb_flush(m_connection.get());
}

// The server tells of a new layout as well when another keyboard is used, as it is by the very
// press of a hot key. So what stays as it was stays grabbed.
void X11HotKeys::followLayout() {
    m_isLayoutNew = false;
    m_keyboard = std::make_unique<X11Keyboard>(m_connection.get());
    // What one of them gives up, another may need.
    for (HotKey& hotKey : m_hotKeys) {
        const Grips unwanted = without(hotKey.grips, gripsFor(hotKey.chord));
        ungrab(unwanted);
        hotKey.grips = without(hotKey.grips, unwanted);
    }
    std::vector<std::pair<HotKeyId, bool>> changes;
    for (HotKey& hotKey : m_hotKeys) {
        const bool wasAvailable = hotKey.isAvailable;
        if (grab(hotKey).has_value() != wasAvailable)
            changes.emplace_back(hotKey.id, !wasAvailable);
    }
    for (const auto& [id, isAvailable] : changes)
        emit availabilityChanged(id, isAvailable);
}

// Waiting for an answer, or sending, may have taken in events, of which the socket no longer tells.
void X11HotKeys::takeEventsLater() {
    QMetaObject::invokeMethod(this, &X11HotKeys::takeEvents, Qt::QueuedConnection);
}

void X11HotKeys::takeEvents() {
    takeQueuedEvents();
    if (m_release && !isDown(m_release->key)) settleRelease();
    // Which the question may have taken in.
    takeQueuedEvents();
    if (!m_connection.isUsable()) m_notifier->setEnabled(false);
}

void X11HotKeys::takeQueuedEvents() {
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(m_connection.get())}) {
        switch (event->response_type & 0x7f) {
        case XCB_KEY_PRESS: {
            const auto& press = reinterpret_cast<const xcb_key_press_event_t&>(*event);
            takePress({press.detail, press.time}, press.state);
            break;
        }
        case XCB_KEY_RELEASE: {
            const auto& release = reinterpret_cast<const xcb_key_release_event_t&>(*event);
            settleRelease();
            m_release = {release.detail, release.time};
            break;
        }
        case XCB_MAPPING_NOTIFY:
            if (!std::exchange(m_isLayoutNew, true))
                QMetaObject::invokeMethod(this, &X11HotKeys::followLayout, Qt::QueuedConnection);
            break;
        case XCB_GE_GENERIC: {
            const auto& raw = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(*event);
            if (raw.event_type == XCB_INPUT_RAW_KEY_RELEASE)
                keyWentUp(static_cast<KeyCode>(raw.detail));
            break;
        }
        default:
            break;
        }
    }
}

// A key that repeats goes up and down at the same moment.
void X11HotKeys::takePress(const KeyMoment& press, ModifierMask state) {
    if (m_release == press) {
        m_release.reset();
        return freeKeyboard();
    }
    settleRelease();
    keyWentDown(press, state);
}

void X11HotKeys::settleRelease() {
    if (const auto release = std::exchange(m_release, std::nullopt)) keyWentUp(release->key);
}

// The grab of the pressed key holds the whole keyboard. It is let go before anything else, so that
// the application in front has the focus again and keys that are posted reach it.
void X11HotKeys::keyWentDown(const KeyMoment& press, ModifierMask state) {
    const KeyCode key = press.key;
    const bool isRepeat = m_held.contains(key);
    const Grip grip{.key = key, .modifiers = static_cast<ModifierMask>(state & allModifiers)};
    const auto pressedKey = std::ranges::find_if(
        m_hotKeys, [&](const HotKey& hotKey) { return hotKey.grips.contains(grip); });
    if (isRepeat) return freeKeyboard();
    if (pressedKey == m_hotKeys.end()) return passOn(press);
    const HotKeyId id = pressedKey->id;
    if (m_knowsReleases) hold(key, pressedKey->chord);
    freeKeyboard();
    if (m_knowsReleases) {
        if (!isDown(key)) keyWentUp(key);
        takeEventsLater();
    }
    emit pressed(id);
}

// A key that is held goes on to repeat, and whoever is in front would take that for typing, which
// overwrites what is highlighted, once the modifiers have been let go. No request makes the server
// stop; so we take the repetitions from before the keyboard is free. What others have grabbed stays
// theirs. A guard holds the keyboard back until it is answered, since the key may have been let go
// and pressed anew before this process came to give the guard up: then it is passed on.
void X11HotKeys::hold(KeyCode key, const HotKeyChord& chord) {
    const Grips guards = guardsFor(key, chord);
    for (const Grip& guard : guards)
        xcb_grab_key(m_connection.get(), 0, m_connection.root(), guard.modifiers, guard.key,
                     XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
    m_held.emplace(key, guards);
    watchReleases(true);
}

void X11HotKeys::freeKeyboard() {
    xcb_ungrab_keyboard(m_connection.get(), XCB_CURRENT_TIME);
    xcb_flush(m_connection.get());
}

// A hot key that was given up meanwhile holds the whole keyboard, but holds nothing back. What was
// pressed later may be held back again by then: its grab is newer, and stays.
void X11HotKeys::passOn(const KeyMoment& press) {
    xcb_allow_events(m_connection.get(), XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
    xcb_ungrab_keyboard(m_connection.get(), press.time);
    xcb_flush(m_connection.get());
}

void X11HotKeys::keyWentUp(KeyCode key) {
    const auto held = m_held.find(key);
    if (held == m_held.end()) return;
    ungrab(without(held->second, allGrips()));
    m_held.erase(held);
    if (m_held.empty()) watchReleases(false);
}

void X11HotKeys::dropGuards() {
    while (!m_held.empty())
        keyWentUp(m_held.begin()->first);
}

void X11HotKeys::watchReleases(bool isOn) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                isOn ? XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE : 0u};
    xcb_input_xi_select_events(m_connection.get(), m_connection.root(), 1, &selection.head);
    xcb_flush(m_connection.get());
}

bool X11HotKeys::isDown(KeyCode key) const {
    const xcb_query_keymap_cookie_t cookie = xcb_query_keymap(m_connection.get());
    const X11Reply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(m_connection.get(), cookie, nullptr));
    return reply && (reply->keys[key / 8] & (1 << (key % 8))) != 0;
}

} // namespace vorq
