#include "capture/ExcludedApplications.h"

#include "platform/Defaults.h"

#include <algorithm>

namespace vorq {
namespace {

QString normalised(QStringView identifier) {
    QString id = identifier.trimmed().toString().toLower();
    if (id.endsWith(u".desktop")) id.chop(8);
    return id;
}

} // namespace

const QString ExcludedApplications::key = QStringLiteral("vorq.capture.excludedApplications");

bool ExcludedApplications::contains(QStringView identifier) const {
    const QString id = normalised(identifier);
    if (id.isEmpty()) return false;
    m_settings.synchronise();
    return std::ranges::any_of(m_settings.strings(key),
                               [&](const QString& entry) { return normalised(entry) == id; });
}

bool ExcludedApplications::isEmpty() const {
    m_settings.synchronise();
    return m_settings.strings(key).isEmpty();
}

} // namespace vorq
