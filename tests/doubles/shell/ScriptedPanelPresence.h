#pragma once

#include "shell/window/PanelPresence.h"

#include <QStringList>

namespace vorq {

/// What was asked of the parts of the shell, in order.
using CallList = QStringList;

/// A panel without a window.
class ScriptedPanelPresence : public PanelPresence {
  public:
    explicit ScriptedPanelPresence(CallList& calls) : m_calls(calls) {}

    [[nodiscard]] bool isPanelVisible() const override { return m_isVisible; }
    void show() override {
        m_isVisible = true;
        m_calls += "show";
    }
    void showBeside() override {
        m_isVisible = true;
        m_calls += "show beside";
    }
    void hide() override {
        m_isVisible = false;
        m_calls += "hide";
    }
    void yieldFocus() override { m_calls += "yield"; }

  private:
    CallList& m_calls;
    bool m_isVisible = false;
};

} // namespace vorq
