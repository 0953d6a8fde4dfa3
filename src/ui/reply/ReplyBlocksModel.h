#pragma once

#include "rendering/AssistantReplyDocument.h"

#include <QAbstractListModel>

namespace vorq {

/// The blocks of one reply, as a list model that tells exactly which blocks changed when the reply
/// grows. Main thread only.
class ReplyBlocksModel final : public QAbstractListModel {
    Q_OBJECT

  public:
    using Block = AssistantReplyDocument::Block;

    enum DataRole {
        KindRole = Qt::UserRole + 1, ///< the kind's name
        TextRole,                    ///< what a headings, a body, a quote or a code says
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const QString& raw() const { return m_raw; }
    [[nodiscard]] const QList<Block>& blocks() const { return m_blocks; }

    void setRaw(const QString& raw);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  private:
    void replace(int row, int count, const QList<Block>& with);

    QString m_raw;
    QList<Block> m_blocks;
};

} // namespace vorq
