#include "shell/panel/AttachmentList.h"

#include "support/RecordTable.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using State = PromptClip::State;

QString kindOf(const PromptClip& clip) {
    const PromptAttachment& attachment = clip.attachment;
    if (attachment.isDeepenSelection) return u"deepen"_s;
    if (attachment.isHubNote()) return u"note"_s;
    const QString extension = pathExtension(attachment.fileName);
    const bool isPicture =
        attachment.imageDataURL ||
        (clip.state != State::Ready && PromptAttachment::isImageExtension(extension));
    // The picture of a document's page stands for the document.
    const bool isPage = PromptAttachment::isDocumentExtension(extension);
    return isPicture && !isPage ? u"photo"_s : u"doc"_s;
}

QString detailOf(const PromptAttachment& attachment) {
    if (attachment.isDeepenSelection)
        return attachment.textContent.value_or(QString()).simplified();
    return attachment.fileName;
}

QStringList titlesOf(const std::vector<PromptClip>& clips) {
    QList<PromptAttachment> attachments;
    for (const PromptClip& clip : clips)
        attachments += clip.attachment;
    return composerDisplayNames(attachments);
}

constexpr auto clipRoles = recordTable<PromptClip>(
    AttachmentList::NameRole,
    {
        {AttachmentList::NameRole, "name",
         [](const PromptClip& clip) -> QVariant { return clip.title; }},
        {AttachmentList::KindRole, "kind",
         [](const PromptClip& clip) -> QVariant { return kindOf(clip); }},
        {AttachmentList::DetailRole, "detail",
         [](const PromptClip& clip) -> QVariant { return detailOf(clip.attachment); }},
        {AttachmentList::LoadingRole, "isLoading",
         [](const PromptClip& clip) -> QVariant { return clip.state == State::Loading; }},
        {AttachmentList::FailedRole, "hasFailed",
         [](const PromptClip& clip) -> QVariant { return clip.state == State::Failed; }},
        {AttachmentList::ReasonRole, "reason",
         [](const PromptClip& clip) -> QVariant { return clip.reason; }},
    });

} // namespace

QList<PromptAttachment> AttachmentList::attachments() const {
    QList<PromptAttachment> ready;
    for (const PromptClip& clip : m_clips)
        if (clip.state == State::Ready) ready += clip.attachment;
    return ready;
}

bool AttachmentList::has(PromptClip::State state) const {
    return std::ranges::find(m_clips, state, &PromptClip::state) != m_clips.end();
}

const PromptClip* AttachmentList::find(const QUuid& id) const {
    const auto found = std::ranges::find_if(
        m_clips, [&id](const PromptClip& clip) { return clip.attachment.id == id; });
    return found == m_clips.end() ? nullptr : &*found;
}

void AttachmentList::append(const PromptAttachment& attachment) {
    insert({.attachment = attachment, .title = {}, .reason = {}});
}

void AttachmentList::appendLoading(const PromptAttachment& known) {
    insert({.attachment = known, .state = State::Loading, .title = {}, .reason = {}});
}

void AttachmentList::insert(PromptClip clip) {
    std::vector<PromptClip> all = m_clips;
    all.push_back(clip);
    clip.title = titlesOf(all).back();
    beginInsertRows({}, count(), count());
    m_clips.push_back(std::move(clip));
    endInsertRows();
    retitle();
    emit countChanged();
}

void AttachmentList::resolve(const QUuid& id, PromptAttachment attachment) {
    attachment.id = id;
    setState({.attachment = std::move(attachment), .title = {}, .reason = {}});
}

void AttachmentList::fail(const QUuid& id, const QString& reason) {
    if (const PromptClip* clip = find(id))
        setState({clip->attachment, State::Failed, clip->title, reason});
}

void AttachmentList::retry(int row) {
    if (row < 0 || row >= count()) return;
    const PromptClip clip = m_clips[static_cast<std::size_t>(row)];
    if (clip.state != State::Failed) return;
    setState({clip.attachment, State::Loading, clip.title, {}});
    emit retried(clip.attachment.id);
}

void AttachmentList::setState(PromptClip clip) {
    const QUuid id = clip.attachment.id;
    const PromptClip* former = find(id);
    if (!former) return;
    const auto row = static_cast<std::size_t>(former - m_clips.data());
    std::vector<PromptClip> all = m_clips;
    all[row] = clip;
    clip.title = titlesOf(all)[static_cast<qsizetype>(row)];
    replace(row, std::move(clip));
    retitle();
    emit stateChanged(id);
}

void AttachmentList::replace(std::size_t row, PromptClip clip) {
    const QList<int> changed = clipRoles.changedRoles(m_clips[row], clip);
    m_clips[row] = std::move(clip);
    const QModelIndex at = index(static_cast<int>(row));
    if (!changed.isEmpty()) emit dataChanged(at, at, changed);
}

void AttachmentList::removeAt(int row) {
    if (row < 0 || row >= count()) return;
    const auto clip = m_clips.begin() + row;
    const QUuid id = clip->attachment.id;
    beginRemoveRows({}, row, row);
    m_clips.erase(clip);
    endRemoveRows();
    retitle();
    emit removed(id);
    emit countChanged();
}

void AttachmentList::removeIf(const std::function<bool(const PromptAttachment&)>& condemned) {
    for (int row = count() - 1; row >= 0; --row)
        if (row < count() && condemned(m_clips[static_cast<std::size_t>(row)].attachment))
            removeAt(row);
}

// The titles of notes count them, so that each change may rename the others.
void AttachmentList::retitle() {
    const QStringList titles = titlesOf(m_clips);
    for (std::size_t row = 0; row < m_clips.size(); ++row) {
        PromptClip clip = m_clips[row];
        clip.title = titles[static_cast<qsizetype>(row)];
        replace(row, std::move(clip));
    }
}

int AttachmentList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant AttachmentList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    return clipRoles.value(m_clips[static_cast<std::size_t>(index.row())], role);
}

QHash<int, QByteArray> AttachmentList::roleNames() const {
    return clipRoles.roleNames();
}

} // namespace vorq
