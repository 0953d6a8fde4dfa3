#pragma once

#include "conversation/VorqMessage.h"

#include <QAbstractListModel>

#include <functional>
#include <optional>
#include <vector>

namespace vorq {

/// The messages of the panel as a list model that tells exactly what changed. Main thread only.
class MessageList final : public QAbstractListModel {
    Q_OBJECT

  public:
    enum DataRole {
        IdRole = Qt::UserRole + 1,
        RoleRole, ///< "user" or "assistant"
        TextRole,
        IsWorkingRole,
        IsTypingRole,
        FollowUpQuestionRole, ///< "" without a follow-up
        FollowUpLabelsRole,
        SentTextRole,        ///< what went out with the prompt; "" for nothing
        SentApplicationRole, ///< whose text that is; "" if that is not known
        CanRetryRole,
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const std::vector<VorqMessage>& messages() const { return m_messages; }

    /// Nothing if no message has the id. Valid until the next change.
    [[nodiscard]] const VorqMessage* find(const QUuid& id) const;

    /// Whether some message is a placeholder that waits.
    [[nodiscard]] bool hasWorking() const;

    void append(VorqMessage message);

    /// Replaces the message of the same id; an unknown id, or an equal message, changes nothing.
    void update(const VorqMessage& message);

    /// Changes each message in place, from the first to the last.
    void updateAll(const std::function<void(VorqMessage&)>& change);

    void removeIf(const std::function<bool(const VorqMessage&)>& condemned);
    void clear();

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    /// After any change of the list or of one of its messages.
    void changed();

  private:
    std::vector<VorqMessage> m_messages;
};

} // namespace vorq
