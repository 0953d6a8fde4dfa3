#include "shell/panel/WaitingPrompt.h"

#include "shell/panel/AttachmentList.h"

#include <utility>

namespace vorq {

WaitingPrompt::WaitingPrompt(AttachmentList& clips) : m_clips(clips) {
    connect(&clips, &AttachmentList::stateChanged, this, &WaitingPrompt::lookLater);
    connect(&clips, &AttachmentList::countChanged, this, &WaitingPrompt::lookLater);
}

QString WaitingPrompt::sentence() {
    return tr("Goes out once all is attached.");
}

void WaitingPrompt::wait() {
    if (m_isWaiting) return;
    setWaiting(true);
    emit announced(sentence());
}

void WaitingPrompt::cancel() {
    if (!m_isWaiting) return;
    setWaiting(false);
    emit announced(tr("Not sent. The prompt is a draft again."));
}

void WaitingPrompt::setWaiting(bool isWaiting) {
    if (std::exchange(m_isWaiting, isWaiting) == isWaiting) return;
    emit changed();
}

// Sending takes the clips off, which must not happen while a change of theirs is being told.
void WaitingPrompt::lookLater() {
    if (!m_isWaiting || std::exchange(m_isLookingLater, true)) return;
    QMetaObject::invokeMethod(this, &WaitingPrompt::look, Qt::QueuedConnection);
}

void WaitingPrompt::look() {
    m_isLookingLater = false;
    if (!m_isWaiting || m_clips.has(PromptClip::State::Loading)) return;
    setWaiting(false);
    emit loaded();
}

} // namespace vorq
