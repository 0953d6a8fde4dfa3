#pragma once

#include "platform/GlobalHotKeys.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <QSocketNotifier>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace vorq {

/// Hot keys by passive grabs on the root window. They work whatever locks are on, and move with the
/// layout of the keyboard. A key that is held longer than its modifiers types nothing: it repeats
/// for nobody until it is let go.
///
/// Nothing of the user's typing is seen but the hot keys, and releases of keys while one is held.
/// Under Wayland, where grabs would only work over some windows, there are no hot keys.
class X11HotKeys final : public GlobalHotKeys {
  public:
    /// The status of a failure that is no error of the X server: there is none, or it is not the
    /// master of the keyboard.
    static constexpr int noServer = NoHotKeys::status;

    explicit X11HotKeys(QObject* parent = nullptr);
    ~X11HotKeys() override;

    [[nodiscard]] PortSupport supported() const override;
    Outcome installEventHandler() override;
    Outcome registerHotKey(const HotKeyChord& chord, HotKeyId id) override;
    void unregisterHotKey(HotKeyId id) override;

  private:
    using KeyCode = X11Keyboard::KeyCode;
    using ModifierMask = X11Keyboard::ModifierMask;

    /// A key with the modifiers that are down at its press, locks among them.
    struct Grip {
        KeyCode key;
        ModifierMask modifiers;

        auto operator<=>(const Grip&) const = default;
    };
    using Grips = std::set<Grip>;

    struct HotKey {
        HotKeyId id;
        HotKeyChord chord;
        Grips grips;
        bool isAvailable = false; // not while another program holds the chord
    };

    [[nodiscard]] ModifierMask modifiersOf(const HotKeyChord& chord) const;
    [[nodiscard]] Grips gripsFor(const HotKeyChord& chord) const;
    /// The key with what may be left of the chord's modifiers before the key itself is let go.
    [[nodiscard]] Grips guardsFor(KeyCode key, const HotKeyChord& chord) const;
    [[nodiscard]] Grips allGrips() const;
    /// Grabs what the layout asks for and gives back the rest; nothing is let go meanwhile.
    Outcome grab(HotKey& hotKey);
    Outcome grabAll(const Grips& grips);
    void ungrab(const Grips& grips);
    void remove(HotKeyId id);
    void followLayout();

    struct KeyMoment {
        KeyCode key;
        std::uint32_t time; // on the server

        bool operator==(const KeyMoment&) const = default;
    };

    void takeEvents();
    void takeQueuedEvents();
    void takePress(const KeyMoment& press, ModifierMask state);
    void takeEventsLater();
    void keyWentDown(const KeyMoment& press, ModifierMask state);
    void hold(KeyCode key, const HotKeyChord& chord);
    void freeKeyboard();
    /// The key that holds the keyboard back, and all after it, go to the window that has the focus.
    void passOn(const KeyMoment& press);
    void keyWentUp(KeyCode key);
    void dropGuards();
    void settleRelease();
    void watchReleases(bool isOn);
    [[nodiscard]] bool isDown(KeyCode key) const;

    X11Connection m_connection;
    bool m_knowsReleases = false;
    std::unique_ptr<X11Keyboard> m_keyboard;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::vector<HotKey> m_hotKeys;
    std::map<KeyCode, Grips> m_held; // keys of hot keys that have not been let go, and their guards
    // A release that came while the keyboard was grabbed, which is only when this process was too
    // busy to free it. Whether the key repeats, only the next event tells.
    std::optional<KeyMoment> m_release;
    bool m_isLayoutNew = false;
};

} // namespace vorq
