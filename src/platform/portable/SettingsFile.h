#pragma once

#include "platform/Defaults.h"

#include <QMap>

#include <functional>
#include <optional>

namespace vorq {

/// The user's settings as one JSON file of mode 0600, replaced atomically by each write.
///
/// Every write first reads the file again, so that two programs of the user change different keys
/// without losing each other's. Members that are neither text, truth, number nor a list of texts
/// are kept as they stand, and read as lists, maps and null. What goes wrong is said once on
/// standard error.
///
/// Of a damaged file counts what can be read of it, and else what was read before. It is kept
/// beside the new one as "<name>.damaged-<number>" before it is replaced; if nothing was read
/// before, the new one names it, so that it stays known what may be lost.
class SettingsFile final : public Defaults {
  public:
    /// The file and its folder need not exist yet.
    explicit SettingsFile(QString path);

    [[nodiscard]] QVariant value(const QString& key) const override;
    void apply(const std::vector<Change>& changes) override;
    bool applyIf(const QString& key, const QString& text,
                 const std::vector<Change>& changes) override;
    /// Tries to write the file as it is.
    [[nodiscard]] std::optional<QString> whyFixed(const QString& key) override;
    [[nodiscard]] bool mayHaveLost(const QString& key) const override;
    void setDamageHandler(const std::function<void(const QString& sentence)>& handler) override;
    void synchronise() override;
    /// Takes kept damaged files along, which may hold secrets, and the folder if nothing else is
    /// in it. What a symbolic link leads to stays, but empty.
    std::expected<void, QString> erase() override;

    [[nodiscard]] const QString& path() const { return m_path; }

  private:
    using Values = QMap<QString, QVariant>;
    struct Content {
        Values values;
        QMap<QString, QByteArray> foreign; // members of other kinds, as JSON
    };

    static std::optional<Content> decode(const QByteArray& bytes);
    static QByteArray encode(const Content& content);

    void reload();
    void handleDamage(const QByteArray& bytes);
    void change(const std::vector<Change>& changes);
    bool applyWhere(const std::function<bool()>& holds, const std::vector<Change>& changes);
    bool write();
    [[nodiscard]] std::optional<QString> keepDamagedFile() const;
    void tellOfDamage();
    bool fail(const QString& reason);
    void warnOnce(const QString& text);

    QString m_path;
    Content m_content;
    // Changes that could not be written stand over what the file says.
    std::vector<Change> m_unwritten;
    QString m_failure; // of the latest write; "" if it came through
    QString m_damage;  // for the user, until it is told
    std::function<void(const QString& sentence)> m_damageHandler;
    bool m_hasSeenDamage = false;
    bool m_hasRead = false;
    bool m_damaged = false;
    bool m_unreadable = false;
    bool m_warned = false;
};

} // namespace vorq
