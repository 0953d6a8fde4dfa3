#pragma once

#include "platform/GlobalHotKeys.h"

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace vorq {

/// Hot keys that are pressed by hand.
class ScriptedHotKeys final : public GlobalHotKeys {
  public:
    /// Why there can be no hot keys at all; nothing if there can.
    std::optional<HotKeyFailure> handlerFailure;
    /// The letters that fail, and why.
    std::map<char, HotKeyFailure> failures;

    /// How often a chord was asked for.
    int attempts = 0;

    [[nodiscard]] const std::vector<std::pair<HotKeyChord, HotKeyId>>& registered() const {
        return m_registered;
    }

    void press(HotKeyId id) { emit pressed(id); }
    void setAvailable(HotKeyId id, bool isAvailable) { emit availabilityChanged(id, isAvailable); }

    Outcome installEventHandler() override {
        if (handlerFailure) return std::unexpected(*handlerFailure);
        return {};
    }
    Outcome registerHotKey(const HotKeyChord& chord, HotKeyId id) override {
        ++attempts;
        unregisterHotKey(id);
        m_registered.emplace_back(chord, id);
        const auto failure = failures.find(chord.letter);
        if (failure != failures.end()) return std::unexpected(failure->second);
        return {};
    }
    void unregisterHotKey(HotKeyId id) override {
        std::erase_if(m_registered, [id](const auto& entry) { return entry.second == id; });
    }

  private:
    std::vector<std::pair<HotKeyChord, HotKeyId>> m_registered;
};

} // namespace vorq
