#include "shell/panel/AttachTrayState.h"

namespace vorq {

void AttachTrayState::setShown(bool isShown) {
    if (m_isShown == isShown) return;
    m_isShown = isShown;
    setMode(Mode::Root);
    emit shownChanged();
}

void AttachTrayState::setMode(Mode mode) {
    if (m_mode == mode) return;
    m_mode = mode;
    emit modeChanged();
}

bool AttachTrayState::closeInnermost() {
    if (!m_isShown) return false;
    if (m_mode == Mode::Notes)
        setMode(Mode::Root);
    else
        setShown(false);
    return true;
}

} // namespace vorq
