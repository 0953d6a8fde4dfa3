#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <expected>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace vorq {

/// The user's stored settings: strings, lists of them and truth values under dotted keys. Main
/// thread only.
///
/// Reads never fail; a key that is missing or holds another type reads as nothing. Writes that
/// cannot reach the disk keep their effect for the life of the process.
class Defaults {
  public:
    /// A key with its new value; an invalid variant removes the key.
    using Change = std::pair<QString, QVariant>;

    Defaults() = default;
    Defaults(const Defaults&) = delete;
    Defaults& operator=(const Defaults&) = delete;
    virtual ~Defaults() = default;

    [[nodiscard]] virtual QVariant value(const QString& key) const = 0;

    /// Stores several changes as one: after a crash either all or none of them are there.
    virtual void apply(const std::vector<Change>& changes) = 0;

    /// The same if the key still holds that text, to which one that is missing or of another type
    /// counts as empty. Another program's write comes before or after the whole. Gives whether the
    /// key did.
    virtual bool applyIf(const QString& key, const QString& text,
                         const std::vector<Change>& changes) = 0;

    /// Why a new value of this key would be forgotten with the process while the present one is
    /// kept; nothing if either would be kept, or neither. For values that are lost with a change.
    [[nodiscard]] virtual std::optional<QString> whyFixed(const QString& /*key*/) {
        return std::nullopt;
    }

    /// Whether nothing is stored under this key though something may have been: it may have been
    /// lost with a file that was damaged, and nothing was set since.
    [[nodiscard]] virtual bool mayHaveLost(const QString& /*key*/) const { return false; }

    /// Who tells the user, in a sentence, that what was stored was found damaged; called at once if
    /// it was before, and at any question.
    virtual void setDamageHandler(const std::function<void(const QString& sentence)>& /*handler*/) {
    }

    /// Takes in what other programs of the user have stored meanwhile.
    virtual void synchronise() {}

    /// Removes all that is stored, wherever it is. The error is a sentence.
    virtual std::expected<void, QString> erase() = 0;

    [[nodiscard]] bool contains(const QString& key) const { return value(key).isValid(); }
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const;
    /// A single string is a list of one. What is no string is passed over, in a list as well.
    [[nodiscard]] QStringList strings(const QString& key) const;
    void setString(const QString& key, const QString& text) { apply({{key, text}}); }
    /// The same, but a text that is stored already costs no write.
    void keepString(const QString& key, const QString& text) {
        if (string(key) != text) setString(key, text);
    }
    void setBoolean(const QString& key, bool truth) { apply({{key, truth}}); }
    void remove(const QString& key) { apply({{key, QVariant()}}); }
};

} // namespace vorq
