#include "shell/window/DeferredPanel.h"

#include <utility>

namespace vorq {

DeferredPanel::DeferredPanel(Clock& clock, Make make) : m_clock(clock), m_make(std::move(make)) {
    proceedAfter(delay);
}

DeferredPanel::~DeferredPanel() {
    if (m_timer) m_clock.cancel(*m_timer);
}

bool DeferredPanel::isPanelVisible() const {
    return m_panel && m_panel->isPanelVisible();
}

void DeferredPanel::show() {
    if (!m_panel) make();
    m_panel->show();
}

void DeferredPanel::showBeside() {
    if (!m_panel) make();
    m_panel->showBeside();
}

void DeferredPanel::hide() {
    if (m_panel) m_panel->hide();
}

void DeferredPanel::yieldFocus() {
    if (m_panel) m_panel->yieldFocus();
}

void DeferredPanel::proceedAfter(Clock::Duration wait) {
    m_timer = m_clock.after(wait, [this] {
        m_timer.reset();
        proceed();
    });
}

void DeferredPanel::proceed() {
    const bool isMade = m_panel != nullptr;
    if (!isMade) make();
    if (!isMade || m_panel->prepareFurther()) proceedAfter(pause);
}

void DeferredPanel::make() {
    m_panel = m_make();
}

} // namespace vorq
