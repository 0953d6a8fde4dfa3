#pragma once

#include "platform/PressMonitor.h"

#include <functional>
#include <utility>

namespace vorq {

/// Presses by hand. They are told whether anybody listens or not.
class ScriptedPresses final : public PressMonitor {
  public:
    bool isOn = false;
    bool tellsOfKeys = false;
    /// What has happened and is not told yet.
    std::function<void()> late;

    void start() override { isOn = true; }
    void stop() override { isOn = false; }
    void startKeys() override { tellsOfKeys = true; }
    void stopKeys() override { tellsOfKeys = false; }
    void catchUp() override {
        if (const auto happened = std::exchange(late, nullptr)) happened();
    }

    void click(const ScreenPress& press) {
        emit pressed(press);
        if (press.button == PressedButton::Left) emit released();
    }
};

} // namespace vorq
