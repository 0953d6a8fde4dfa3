#pragma once

#include "platform/copying/KeyPoster.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11InputWatch.h"
#include "platform/linux/x11/X11Keyboard.h"

#include <memory>
#include <vector>

namespace vorq {

/// Presses keys by the test extension of an X server, which sends them to whatever has the
/// keyboard. Needs an event loop.
class X11KeyPoster final : public KeyPoster {
  public:
    X11KeyPoster();

    [[nodiscard]] PortSupport supported() const override;
    [[nodiscard]] std::uint32_t heldModifiers() const override;
    bool post(KeyChord chord, ProcessId target) override;
    bool press(const HotKeyChord& chord, ProcessId target) override;
    [[nodiscard]] bool wasUsedSincePost() override;

  private:
    using KeyCode = X11Keyboard::KeyCode;
    using KeyCodes = std::vector<KeyCode>;

    [[nodiscard]] bool hasKeyboard(ProcessId process) const;
    [[nodiscard]] KeyCodes keysOf(KeyChord chord, const X11Keyboard& keyboard) const;
    [[nodiscard]] static KeyCodes keysOf(const HotKeyChord& chord, const X11Keyboard& keyboard);
    bool type(const KeyCodes& keys, const X11Keyboard& keyboard, ProcessId target);
    [[nodiscard]] KeyCodes heldOf(const KeyCodes& keys) const;
    void press(KeyCode key) const;
    void release(KeyCode key) const;
    void pressSilently(const X11Keyboard& keyboard) const;
    void lift(const KeyCodes& held, const X11Keyboard& keyboard) const;
    void putBack(const KeyCodes& lifted, const X11Keyboard& keyboard) const;
    void settle() const;

    X11Connection m_x11;
    bool m_canPress = false;
    bool m_seesPresses = false;
    std::unique_ptr<X11InputWatch> m_watch; // since the last post
};

} // namespace vorq
