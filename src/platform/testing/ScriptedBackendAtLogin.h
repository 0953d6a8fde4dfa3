#pragma once

#include "platform/BackendAtLogin.h"

#include <atomic>
#include <optional>

namespace vorq {

/// Does nothing but remember.
class ScriptedBackendAtLogin final : public BackendAtLogin {
  public:
    bool isHere = true;
    std::optional<QString> failure; ///< of switching and removing
    std::atomic<bool> on = false;
    std::atomic<bool> isRemoved = false;

    [[nodiscard]] PortSupport supported() const override {
        if (isHere) return {};
        return std::unexpected(QStringLiteral("The backend is elsewhere."));
    }
    [[nodiscard]] bool isOn() const override { return on; }
    Outcome switchOn() override { return change(true); }
    Outcome switchOff() override { return change(false); }
    Outcome remove() override {
        isRemoved = true;
        return change(false);
    }

  private:
    Outcome change(bool isOn) {
        if (failure) return std::unexpected(*failure);
        on = isOn;
        return {};
    }
};

} // namespace vorq
