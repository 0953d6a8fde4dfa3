#pragma once

#include "capture/attachments/PromptAttachment.h"

#include <QAbstractListModel>

#include <functional>

namespace vorq {

/// The attachments of the prompt being written, as the clips of the composer. Main thread only.
class AttachmentList : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum DataRole {
        NameRole = Qt::UserRole + 1, ///< the clip's title
        KindRole,                    ///< "photo", "doc", "note" or "deepen"
        DetailRole,                  ///< the whole of what a clip stands for, in one line
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const QList<PromptAttachment>& attachments() const { return m_attachments; }
    [[nodiscard]] int count() const { return static_cast<int>(m_attachments.size()); }

    void append(const PromptAttachment& attachment);
    void removeIf(const std::function<bool(const PromptAttachment&)>& condemned);
    /// A row that is none changes nothing.
    Q_INVOKABLE void removeAt(int row);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    void countChanged();

  private:
    void renameOthers();

    QList<PromptAttachment> m_attachments;
};

} // namespace vorq
