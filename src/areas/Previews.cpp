#include "areas/Previews.h"

#include "platform/Defaults.h"

using namespace Qt::StringLiterals;

namespace vorq {

QString Previews::keyOf(Preview preview) {
    return u"vorq.preview."_s + previewNames.nameOf(preview);
}

bool Previews::isOn(Preview preview) const {
    return m_openForThisRun.contains(preview) || m_defaults.boolean(keyOf(preview)).value_or(false);
}

void Previews::openForThisRun(Preview preview) {
    const bool wasOn = isOn(preview);
    m_openForThisRun.insert(preview);
    if (!wasOn) emit changed(preview);
}

std::expected<void, QString> Previews::set(Preview preview, bool isOn) {
    const QString key = keyOf(preview);
    if (auto reason = m_defaults.whyFixed(key)) return std::unexpected(*std::move(reason));
    const bool wasOn = this->isOn(preview);
    m_openForThisRun.erase(preview);
    if (isOn)
        m_defaults.setBoolean(key, true);
    else
        m_defaults.remove(key);
    if (wasOn != isOn) emit changed(preview);
    return {};
}

} // namespace vorq
