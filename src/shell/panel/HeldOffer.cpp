#include "shell/panel/HeldOffer.h"

#include "panel/HeldCapture.h"

namespace vorq {

HeldOffer::HeldOffer(HeldCapture& held) : m_held(held) {
    connect(&held, &HeldCapture::changed, this, [this] {
        emit changed();
        announce();
    });
}

bool HeldOffer::isHolding() const {
    return !m_held.isEmpty();
}

QString HeldOffer::from() const {
    return m_held.application();
}

void HeldOffer::announce() {
    if (!isHolding()) return;
    const QString what =
        from().isEmpty()
            ? tr("What is highlighted reads like a password or a key.")
            : tr("What is highlighted in %1 reads like a password or a key.").arg(from());
    emit announced(what + u' ' + tr("It is held back: send it or discard it."));
}

void HeldOffer::discard() {
    m_held.discard();
    emit announced(tr("Discarded."));
    emit discarded();
}

} // namespace vorq
