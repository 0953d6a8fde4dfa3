#pragma once

#include "capture/attachments/AttachmentReader.h"
#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>
#include <QUuid>

#include <deque>
#include <functional>
#include <map>
#include <stop_token>

namespace vorq {

class AttachmentList;

/// Fills clips with what is read for them, some at a time, in the order in which they came. A clip
/// that is taken off stops its reading; one that failed is read again on the user's wish. Main
/// thread only.
class ClipLoader final : public QObject {
    Q_OBJECT

  public:
    /// Each may start programs and hold a document in memory.
    static constexpr int mostAtOnce = 4;

    using Read = std::function<QCoro::Task<AttachmentResult>(std::stop_token)>;

    /// The list must outlive this object.
    explicit ClipLoader(AttachmentList& clips);

    /// Adds a clip, which shows what is known of the attachment until it has been read.
    void load(const PromptAttachment& known, Read read);

  private:
    struct Load {
        Read read;
        bool isRunning = false;
        TaskSlot task;
    };

    void startNext();
    void drop(const QUuid& id);
    void finish(const QUuid& id, const AttachmentResult& result);
    static QCoro::Task<> run(ClipLoader* self, QUuid id, Read read, std::stop_token stop);

    AttachmentList& m_clips;
    std::map<QUuid, Load> m_loads; // of all clips that are not ready
    std::deque<QUuid> m_waiting;
};

} // namespace vorq
