#pragma once

#include "platform/GlobalHotKeys.h"
#include "platform/PortSupport.h"
#include "platform/ProcessId.h"

#include <QString>

#include <cstdint>
#include <utility>

namespace vorq {

/// Which modifiers are held, one bit each.
namespace HeldModifier {
inline constexpr std::uint32_t shift = 0x20000;
inline constexpr std::uint32_t control = 0x40000;
inline constexpr std::uint32_t option = 0x80000;
/// The key of hot keys.
inline constexpr std::uint32_t command = 0x100000;
} // namespace HeldModifier

/// A key that is pressed with Control, and with Shift if it says so.
struct KeyChord {
    enum class Key : std::uint8_t { C, V, Z, Insert };

    Key key = Key::C;
    bool hasShift = false;

    bool operator==(const KeyChord&) const = default;
};

/// Presses keys in the user's place. Main thread only; it waits for no other program.
class KeyPoster {
  public:
    KeyPoster() = default;
    KeyPoster(const KeyPoster&) = delete;
    KeyPoster& operator=(const KeyPoster&) = delete;
    virtual ~KeyPoster() = default;

    /// Whether other programs can be sent keys, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// The bits of HeldModifier.
    [[nodiscard]] virtual std::uint32_t heldModifiers() const = 0;

    /// Presses the chord if the process has the keyboard at that very moment, else nothing; returns
    /// whether it did. Modifiers that the user holds are lifted for the chord and put back.
    virtual bool post(KeyChord chord, ProcessId target) = 0;

    /// The same with a hot key, to find out whether it reaches its program.
    virtual bool press(const HotKeyChord& chord, ProcessId target) = 0;

    /// Whether the user has pressed a key or a mouse button, in whatever program, since the last
    /// post. True where it cannot be known.
    [[nodiscard]] virtual bool wasUsedSincePost() = 0;
};

/// No key reaches anyone.
class NoKeyPoster final : public KeyPoster {
  public:
    explicit NoKeyPoster(QString reason = QStringLiteral("There is no desktop to press keys on."))
        : m_reason(std::move(reason)) {}

    [[nodiscard]] PortSupport supported() const override { return std::unexpected(m_reason); }
    [[nodiscard]] std::uint32_t heldModifiers() const override { return 0; }
    bool post(KeyChord, ProcessId) override { return false; }
    bool press(const HotKeyChord&, ProcessId) override { return false; }
    [[nodiscard]] bool wasUsedSincePost() override { return true; }

  private:
    QString m_reason;
};

} // namespace vorq
