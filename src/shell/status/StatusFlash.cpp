#include "shell/status/StatusFlash.h"

#include <utility>

namespace vorq {

StatusFlash::StatusFlash(Clock& clock, std::function<void(StatusImage)> show)
    : m_clock(clock), m_show(std::move(show)) {}

StatusFlash::~StatusFlash() {
    cancelRestore();
}

void StatusFlash::flash(StatusImage image) {
    cancelRestore();
    m_show(image);
    m_restore = m_clock.after(duration, [this] {
        m_restore.reset();
        m_show(StatusImage::Glyph);
    });
}

void StatusFlash::cancelRestore() {
    if (m_restore) m_clock.cancel(*m_restore);
    m_restore.reset();
}

} // namespace vorq
