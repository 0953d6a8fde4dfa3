#include "capture/source/ExcludedApplications.h"

#include "capture/source/CaptureLogging.h"
#include "platform/Defaults.h"

#include <algorithm>
#include <utility>

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
    const std::optional<QStringList> excluded = entries();
    if (!excluded) return true;
    const QString id = normalised(identifier);
    return !id.isEmpty() && std::ranges::any_of(*excluded, [&](const QString& entry) {
        return normalised(entry) == id;
    });
}

bool ExcludedApplications::isEmpty() const {
    const std::optional<QStringList> excluded = entries();
    return excluded && excluded->isEmpty();
}

std::optional<QStringList> ExcludedApplications::entries() const {
    m_settings.synchronise();
    const QVariant held = m_settings.value(key);
    QStringList entries = m_settings.strings(key);
    const bool isList = !held.isValid() || held.typeId() == QMetaType::QStringList;
    if (isList || !entries.isEmpty()) return entries;
    if (!std::exchange(m_hasWarned, true))
        qCWarning(captureLog,
                  "Vorq captures from no application: the setting %s is no list of texts.",
                  qUtf8Printable(key));
    return std::nullopt;
}

} // namespace vorq
