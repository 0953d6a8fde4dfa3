#pragma once

#include "shell/panel/PromptClip.h"

#include <QAbstractListModel>

#include <functional>
#include <vector>

namespace vorq {

/// The attachments of the prompt being written, as the clips of the composer, in the order in which
/// the user chose them. Main thread only.
class AttachmentList : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum DataRole {
        NameRole = Qt::UserRole + 1, ///< the clip's title
        KindRole,                    ///< "photo", "doc", "note" or "deepen"
        DetailRole,                  ///< the whole of what a clip stands for, in one line
        LoadingRole,
        FailedRole,
        ReasonRole, ///< why it failed, as a sentence
    };

    using QAbstractListModel::QAbstractListModel;

    /// Those that can go out with a prompt.
    [[nodiscard]] QList<PromptAttachment> attachments() const;
    [[nodiscard]] const std::vector<PromptClip>& clips() const { return m_clips; }
    [[nodiscard]] int count() const { return static_cast<int>(m_clips.size()); }
    [[nodiscard]] bool has(PromptClip::State state) const;
    /// Nothing without such a clip.
    [[nodiscard]] const PromptClip* find(const QUuid& id) const;

    void append(const PromptAttachment& attachment);
    /// A clip of something that is still to be read, of which the identity, the name and what
    /// kind of thing it is are known.
    void appendLoading(const PromptAttachment& known);
    /// What has been read, in place of the clip of this identity, which it takes on. Without such a
    /// clip nothing changes, here and below.
    void resolve(const QUuid& id, PromptAttachment attachment);
    void fail(const QUuid& id, const QString& reason);

    void removeIf(const std::function<bool(const PromptAttachment&)>& condemned);
    /// A row that is none changes nothing, here and below.
    Q_INVOKABLE void removeAt(int row);
    /// Of a clip that failed.
    Q_INVOKABLE void retry(int row);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    void countChanged();
    /// The state of a clip.
    void stateChanged(const QUuid& id);
    void removed(const QUuid& id);
    /// The clip is loading again.
    void retried(const QUuid& id);

  private:
    void insert(PromptClip clip);
    void setState(PromptClip clip);
    void replace(std::size_t row, PromptClip clip);
    void retitle();

    std::vector<PromptClip> m_clips;
};

} // namespace vorq
