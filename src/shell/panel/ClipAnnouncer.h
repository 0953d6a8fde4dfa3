#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUuid>

namespace vorq {

class AttachmentList;

/// Says that clips are loading, and what became of them, to those who do not see them. What happens
/// at once is said at once, since of several sentences only the last would be heard. Main thread
/// only.
class ClipAnnouncer final : public QObject {
    Q_OBJECT

  public:
    /// The list must outlive this object.
    explicit ClipAnnouncer(const AttachmentList& clips);

  signals:
    void announced(const QString& sentences);

  private:
    void note(const QUuid& id);
    void tell();

    const AttachmentList& m_clips;
    QList<QUuid> m_news; // clips of which something is to be said
};

} // namespace vorq
