#include "platform/Defaults.h"

namespace vorq {

std::optional<QString> Defaults::string(const QString& key) const {
    const QVariant held = value(key);
    if (held.typeId() != QMetaType::QString) return std::nullopt;
    return held.toString();
}

std::optional<bool> Defaults::boolean(const QString& key) const {
    const QVariant held = value(key);
    if (held.typeId() != QMetaType::Bool) return std::nullopt;
    return held.toBool();
}

QStringList Defaults::strings(const QString& key) const {
    const QVariant held = value(key);
    return held.typeId() == QMetaType::QStringList ? held.toStringList() : QStringList();
}

} // namespace vorq
