#pragma once

#include "platform/PortSupport.h"

#include <QObject>

#include <cstdint>
#include <expected>

namespace vorq {

/// Says whose hot key an event means: the signature is that of the program, four characters.
struct HotKeyId {
    std::uint32_t signature = 0;
    std::uint32_t number = 0;

    bool operator==(const HotKeyId&) const = default;
};

/// The modifiers of a chord, to be added up.
namespace HotKeyModifier {
inline constexpr std::uint32_t command = 256; // Super where there is no such key
inline constexpr std::uint32_t shift = 512;
} // namespace HotKeyModifier

/// A key with what is held down beside it.
struct HotKeyChord {
    char letter = 0;           ///< upper case; the key that types it in the user's layout
    std::uint32_t keyCode = 0; ///< of that key in the Latin layout, as the Mac counts keys
    std::uint32_t modifiers = 0;

    bool operator==(const HotKeyChord&) const = default;
};

/// Why registering a hot key failed.
struct HotKeyFailure {
    int status = 0;       ///< as the system numbers its errors
    bool isTaken = false; ///< another program holds the chord

    bool operator==(const HotKeyFailure&) const = default;
};

/// Chords that reach the program whatever application is in front. Main thread only.
class GlobalHotKeys : public QObject {
    Q_OBJECT

  public:
    using Outcome = std::expected<void, HotKeyFailure>;

    using QObject::QObject;

    /// Whether a program can have hot keys here, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Comes before any registration. Fails where a program cannot have hot keys.
    virtual Outcome installEventHandler() = 0;

    /// A chord that fails is kept in mind all the same, see availabilityChanged.
    virtual Outcome registerHotKey(const HotKeyChord& chord, HotKeyId id) = 0;

    /// One that is unknown is left alone.
    virtual void unregisterHotKey(HotKeyId id) = 0;

  signals:
    /// Once for each time that the user goes down on the chord, however long it is held. By then
    /// the keyboard is free again for whoever has the focus.
    void pressed(vorq::HotKeyId id);

    /// With another layout of the keyboard, a chord was lost to another program or won.
    void availabilityChanged(vorq::HotKeyId id, bool isAvailable);
};

/// A session that gives no keys to programs.
class NoHotKeys final : public GlobalHotKeys {
  public:
    /// No error of the system: there is nobody to ask.
    static constexpr int status = -1;

    [[nodiscard]] PortSupport supported() const override {
        return std::unexpected(QStringLiteral("There is no desktop to register hot keys with."));
    }
    Outcome installEventHandler() override {
        return std::unexpected(HotKeyFailure{.status = status});
    }
    Outcome registerHotKey(const HotKeyChord& /*chord*/, HotKeyId /*id*/) override {
        return std::unexpected(HotKeyFailure{.status = status});
    }
    void unregisterHotKey(HotKeyId /*id*/) override {}
};

} // namespace vorq
