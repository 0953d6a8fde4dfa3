#include "platform/testing/ScriptedDefaults.h"

namespace vorq {

void ScriptedDefaults::apply(const std::vector<Change>& changes) {
    ++m_writes;
    for (const auto& [key, value] : changes) {
        if (value.isValid())
            m_values.insert(key, value);
        else
            m_values.remove(key);
    }
}

bool ScriptedDefaults::applyIf(const QString& key, const QString& text,
                               const std::vector<Change>& changes) {
    if (string(key).value_or(QString()) != text) return false;
    apply(changes);
    return true;
}

std::expected<void, QString> ScriptedDefaults::erase() {
    m_values.clear();
    return {};
}

} // namespace vorq
