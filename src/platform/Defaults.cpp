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
    if (held.typeId() == QMetaType::QStringList) return held.toStringList();
    const QVariantList entries =
        held.typeId() == QMetaType::QVariantList ? held.toList() : QVariantList{held};
    QStringList texts;
    for (const QVariant& entry : entries)
        if (entry.typeId() == QMetaType::QString) texts += entry.toString();
    return texts;
}

} // namespace vorq
