#include "capture/source/ExcludedApplications.h"

#include "capture/source/CaptureLogging.h"
#include "platform/Defaults.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QString normalised(QStringView identifier) {
    QString id = identifier.trimmed().toString().toLower();
    if (id.endsWith(u".desktop")) id.chop(8);
    return id;
}

} // namespace

const QString ExcludedApplications::key = u"vorq.capture.excludedApplications"_s;

bool ExcludedApplications::contains(QStringView identifier) const {
    const std::optional<QStringList> excluded = entries();
    if (!excluded) return warnOnce();
    const QString id = normalised(identifier);
    return !id.isEmpty() && std::ranges::any_of(*excluded, [&](const QString& entry) {
        return normalised(entry) == id;
    });
}

bool ExcludedApplications::isEmpty() const {
    const std::optional<QStringList> excluded = entries();
    if (!excluded) return !warnOnce();
    return excluded->isEmpty();
}

std::optional<QStringList> ExcludedApplications::entries() const {
    m_settings.synchronise();
    if (m_settings.mayHaveLost(key)) return std::nullopt;
    const QVariant held = m_settings.value(key);
    QStringList entries = m_settings.strings(key);
    const bool isList = !held.isValid() || held.typeId() == QMetaType::QStringList;
    if (isList || !entries.isEmpty()) return entries;
    return std::nullopt;
}

bool ExcludedApplications::warnOnce() const {
    if (!std::exchange(m_hasWarned, true))
        qCWarning(captureLog, "Vorq captures from no application: the setting %s %s.",
                  qUtf8Printable(key),
                  m_settings.contains(key) ? "is no list of texts"
                                           : "may have been lost with damaged settings");
    return true;
}

} // namespace vorq
