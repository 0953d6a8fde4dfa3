#pragma once

#include "platform/copying/KeyPoster.h"

#include <functional>
#include <utility>
#include <vector>

namespace vorq {

/// Notes the keys that are pressed; programs answer them by hand.
class ScriptedKeyPoster final : public KeyPoster {
  public:
    std::uint32_t held = 0;
    bool wasUsed = false;
    PortSupport support;
    /// Which process has the keyboard; without it, all that are asked for have.
    std::function<bool(ProcessId)> hasKeyboard;
    /// What comes of a chord.
    std::function<void(KeyChord, ProcessId)> onPost;

    [[nodiscard]] const std::vector<std::pair<KeyChord, ProcessId>>& posted() const {
        return m_posted;
    }

    [[nodiscard]] PortSupport supported() const override { return support; }
    [[nodiscard]] std::uint32_t heldModifiers() const override { return held; }
    bool post(KeyChord chord, ProcessId target) override {
        if (hasKeyboard && !hasKeyboard(target)) return false;
        m_posted.emplace_back(chord, target);
        if (onPost) onPost(chord, target);
        return true;
    }
    /// What comes of a hot key.
    std::function<void(const HotKeyChord&)> onPress;
    bool press(const HotKeyChord& chord, ProcessId target) override {
        if (hasKeyboard && !hasKeyboard(target)) return false;
        if (onPress) onPress(chord);
        return true;
    }
    [[nodiscard]] bool wasUsedSincePost() override { return wasUsed; }

  private:
    std::vector<std::pair<KeyChord, ProcessId>> m_posted;
};

} // namespace vorq
