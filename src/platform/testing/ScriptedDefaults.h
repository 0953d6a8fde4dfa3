#pragma once

#include "platform/Defaults.h"

#include <QMap>

namespace vorq {

/// Settings that live in memory and remember how often they were written.
class ScriptedDefaults final : public Defaults {
  public:
    [[nodiscard]] QVariant value(const QString& key) const override { return m_values.value(key); }
    void apply(const std::vector<Change>& changes) override;
    bool applyIf(const QString& key, const QString& text,
                 const std::vector<Change>& changes) override;
    std::expected<void, QString> erase() override;
    [[nodiscard]] std::optional<QString> whyFixed(const QString& /*key*/) override { return fixed; }

    [[nodiscard]] bool mayHaveLost(const QString& key) const override {
        return lost.contains(key) && !contains(key);
    }

    QStringList lost;             ///< the keys that may have been there
    std::optional<QString> fixed; ///< why no value can be changed for good

    [[nodiscard]] const QMap<QString, QVariant>& values() const { return m_values; }
    [[nodiscard]] int writes() const { return m_writes; }

  private:
    QMap<QString, QVariant> m_values;
    int m_writes = 0;
};

} // namespace vorq
