#include "shell/panel/AttachableNotes.h"

#include "core/VorqAppState.h"
#include "platform/NotesBridge.h"
#include "shell/panel/AttachmentList.h"

#include <algorithm>
#include <utility>

namespace vorq {
namespace {

constexpr int mostAppleNotes = 100;

} // namespace

AttachableNotes::AttachableNotes(VorqAppState& state, AttachmentList& attachments)
    : m_state(state), m_attachments(attachments) {
    connect(&attachments, &AttachmentList::countChanged, this, &AttachableNotes::forgetDetached);
}

void AttachableNotes::load() {
    listLibrary();
    setAppleNotesLoading(true);
    m_listing.restart(
        [this](std::stop_token stop) { return listFromApplication(this, std::move(stop)); });
}

QCoro::Task<> AttachableNotes::listFromApplication(AttachableNotes* self, std::stop_token stop) {
    const std::vector<AppleNoteSummary> notes =
        co_await self->m_state.notes().listNotes(mostAppleNotes, stop);
    if (!stop.stop_requested()) self->listAppleNotes(notes);
}

void AttachableNotes::listLibrary() {
    beginResetModel();
    m_rows.clear();
    for (const SavedNote& note : m_state.library().savedNotes().records())
        m_rows.push_back(
            {displayTitle(note), noteSnippet(note).value_or(QString()), note.id, QString()});
    endResetModel();
    emit countChanged();
}

void AttachableNotes::listAppleNotes(const std::vector<AppleNoteSummary>& notes) {
    if (!notes.empty()) {
        beginInsertRows({}, count(), count() + static_cast<int>(notes.size()) - 1);
        for (const AppleNoteSummary& note : notes)
            m_rows.push_back({note.title, tr("In your notes application"), std::nullopt, note.id});
        endInsertRows();
        emit countChanged();
    }
    setAppleNotesLoading(false);
}

void AttachableNotes::setAppleNotesLoading(bool isLoading) {
    if (m_appleNotesLoading == isLoading) return;
    m_appleNotesLoading = isLoading;
    emit appleNotesLoadingChanged();
}

bool AttachableNotes::isAttached(const Row& row) const {
    if (!row.noteID) return m_appleNoteClipIDs.contains(row.appleNoteID);
    const QList<PromptAttachment>& held = m_attachments.attachments();
    return std::ranges::find(held, row.noteID, &PromptAttachment::noteID) != held.end();
}

void AttachableNotes::toggle(int row) {
    if (row < 0 || row >= count()) return;
    // A copy: what follows may list anew.
    const Row chosen = m_rows[static_cast<std::size_t>(row)];
    if (chosen.noteID)
        toggleLibraryNote(chosen);
    else
        toggleAppleNote(chosen);
}

void AttachableNotes::toggleLibraryNote(const Row& row) {
    if (isAttached(row)) {
        m_attachments.removeIf(
            [&row](const PromptAttachment& held) { return held.noteID == row.noteID; });
        return;
    }
    const SavedNote* note = m_state.library().savedNotes().find(*row.noteID);
    if (!note) return;
    PromptAttachment attachment;
    attachment.fileName = row.title;
    attachment.textContent = studySource(*note);
    attachment.noteID = row.noteID;
    m_attachments.append(attachment);
}

void AttachableNotes::toggleAppleNote(const Row& row) {
    const QString id = row.appleNoteID;
    if (m_awaited.remove(id)) return;
    if (isAttached(row)) {
        const QUuid clip = m_appleNoteClipIDs.value(id);
        m_attachments.removeIf([&clip](const PromptAttachment& held) { return held.id == clip; });
        return;
    }
    m_awaited.insert(id);
    m_reading.release();
    m_reading.restart([this, id, title = row.title](std::stop_token stop) {
        return readNote(this, id, title, std::move(stop));
    });
}

QCoro::Task<> AttachableNotes::readNote(AttachableNotes* self, QString id, QString title,
                                        std::stop_token stop) {
    const std::optional<QString> body = co_await self->m_state.notes().noteBody(id, stop);
    if (!stop.stop_requested() && self->m_awaited.remove(id))
        self->attachAppleNote(id, title, body);
}

void AttachableNotes::attachAppleNote(const QString& id, const QString& title,
                                      const std::optional<QString>& body) {
    if (!body) {
        emit noteUnreadable(title);
        return;
    }
    PromptAttachment attachment;
    attachment.fileName = title;
    attachment.textContent = *body;
    m_appleNoteClipIDs.insert(id, attachment.id);
    m_attachments.append(attachment);
}

// A clip may also be taken off in the composer, or go out with a prompt.
void AttachableNotes::forgetDetached() {
    const QList<PromptAttachment>& held = m_attachments.attachments();
    m_appleNoteClipIDs.removeIf([&held](const QHash<QString, QUuid>::iterator& clip) {
        return std::ranges::find(held, clip.value(), &PromptAttachment::id) == held.end();
    });
    if (!m_rows.empty()) emit dataChanged(index(0), index(count() - 1), {CheckedRole});
}

int AttachableNotes::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant AttachableNotes::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == TitleRole) return row.title;
    if (role == DetailRole) return row.detail;
    if (role == CheckedRole) return isAttached(row);
    return {};
}

QHash<int, QByteArray> AttachableNotes::roleNames() const {
    return {{TitleRole, "title"}, {DetailRole, "detail"}, {CheckedRole, "isChecked"}};
}

} // namespace vorq
