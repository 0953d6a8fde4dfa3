#include "shell/panel/ClipAnnouncer.h"

#include "shell/panel/AttachmentList.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

ClipAnnouncer::ClipAnnouncer(const AttachmentList& clips) : m_clips(clips) {
    connect(&clips, &AttachmentList::stateChanged, this, &ClipAnnouncer::note);
    connect(&clips, &AttachmentList::rowsInserted, this, [this](const QModelIndex&, int row) {
        const PromptClip& clip = m_clips.clips()[static_cast<std::size_t>(row)];
        if (clip.state == PromptClip::State::Loading) note(clip.attachment.id);
    });
}

void ClipAnnouncer::note(const QUuid& id) {
    if (m_news.isEmpty())
        QMetaObject::invokeMethod(this, &ClipAnnouncer::tell, Qt::QueuedConnection);
    if (!m_news.contains(id)) m_news += id;
}

void ClipAnnouncer::tell() {
    QStringList loading;
    QStringList attached;
    QStringList sentences;
    for (const QUuid& id : std::exchange(m_news, {})) {
        const PromptClip* clip = m_clips.find(id);
        if (!clip) continue;
        if (clip->state == PromptClip::State::Loading)
            loading += clip->title;
        else if (clip->state == PromptClip::State::Ready)
            attached += clip->title;
        else
            sentences += tr("Could not attach %1: %2").arg(clip->title, clip->reason);
    }
    const QString separator = u", "_s;
    if (!attached.isEmpty()) sentences += tr("Attached %1").arg(attached.join(separator));
    if (!loading.isEmpty()) sentences += tr("Loading %1").arg(loading.join(separator));
    if (!sentences.isEmpty()) emit announced(sentences.join(u". "_s));
}

} // namespace vorq
