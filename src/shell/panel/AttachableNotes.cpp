#include "shell/panel/AttachableNotes.h"

#include "core/VorqAppState.h"
#include "platform/NotesBridge.h"
#include "shell/panel/AttachmentList.h"
#include "shell/panel/ClipLoader.h"
#include "support/RecordTable.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vorq {
namespace {

constexpr int mostAppleNotes = 100;

QCoro::Task<AttachmentResult> readNote(NotesBridge& notes, QString id, QString title,
                                       std::stop_token stop) {
    const std::optional<QString> body = co_await notes.noteBody(std::move(id), std::move(stop));
    if (!body) co_return std::unexpected(AttachableNotes::tr("There is no text to attach."));
    PromptAttachment attachment;
    attachment.fileName = title;
    attachment.textContent = *body;
    co_return attachment;
}

} // namespace

struct AttachableNotes::Roles {
    static constexpr auto table = recordTable<Row>(
        TitleRole,
        {
            {TitleRole, "title", [](const Row& row) -> QVariant { return row.title; }},
            {DetailRole, "detail", [](const Row& row) -> QVariant { return row.detail; }},
            {CheckedRole, "isChecked", [](const Row& row) -> QVariant { return row.isChecked; }},
        });
};

AttachableNotes::AttachableNotes(VorqAppState& state, AttachmentList& attachments,
                                 ClipLoader& clips)
    : m_state(state), m_attachments(attachments), m_clips(clips) {
    connect(&attachments, &AttachmentList::countChanged, this, &AttachableNotes::followClips);
    connect(&attachments, &AttachmentList::stateChanged, this, &AttachableNotes::followClips);
}

void AttachableNotes::load() {
    setSearch({});
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
    m_all.clear();
    for (const SavedNote& note : m_state.library().savedNotes().records()) {
        Row row{displayTitle(note), noteSnippet(note).value_or(QString()), note.id, QString()};
        row.isChecked = isAttached(row);
        m_all.push_back(std::move(row));
    }
    showFound();
}

void AttachableNotes::listAppleNotes(const std::vector<AppleNoteSummary>& notes) {
    std::vector<Row> found;
    for (const AppleNoteSummary& note : notes) {
        Row row{note.title, tr("In your notes application"), std::nullopt, note.id};
        row.isChecked = isAttached(row);
        m_all.push_back(row);
        if (isFound(row)) found.push_back(std::move(row));
    }
    if (!found.empty()) {
        beginInsertRows({}, count(), count() + static_cast<int>(found.size()) - 1);
        std::ranges::move(found, std::back_inserter(m_rows));
        endInsertRows();
    }
    if (!notes.empty()) emit countChanged();
    setAppleNotesLoading(false);
}

void AttachableNotes::setAppleNotesLoading(bool isLoading) {
    if (m_appleNotesLoading == isLoading) return;
    m_appleNotesLoading = isLoading;
    emit appleNotesLoadingChanged();
}

void AttachableNotes::setSearch(const QString& search) {
    if (m_search == search) return;
    m_search = search;
    emit searchChanged();
    showFound();
}

void AttachableNotes::showFound() {
    beginResetModel();
    m_rows.clear();
    std::ranges::copy_if(m_all, std::back_inserter(m_rows),
                         [this](const Row& row) { return isFound(row); });
    endResetModel();
    emit countChanged();
}

bool AttachableNotes::isFound(const Row& row) const {
    return std::ranges::all_of(m_search.simplified().split(u' '), [&row](const QString& word) {
        return row.title.contains(word, Qt::CaseInsensitive) ||
               row.detail.contains(word, Qt::CaseInsensitive);
    });
}

bool AttachableNotes::isAttached(const Row& row) const {
    if (!row.noteID) {
        const PromptClip* clip = m_attachments.find(m_appleNoteClipIDs.value(row.appleNoteID));
        return clip && clip->state != PromptClip::State::Failed;
    }
    return std::ranges::any_of(m_attachments.clips(), [&row](const PromptClip& clip) {
        return clip.attachment.noteID == row.noteID;
    });
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
    if (!row.noteID) return;
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

// One that could not be read is read anew.
void AttachableNotes::toggleAppleNote(const Row& row) {
    const QString id = row.appleNoteID;
    const bool wasAttached = isAttached(row);
    m_attachments.removeIf([former = m_appleNoteClipIDs.value(id)](const PromptAttachment& held) {
        return held.id == former;
    });
    if (wasAttached) return;
    PromptAttachment known;
    known.fileName = row.title;
    m_appleNoteClipIDs.insert(id, known.id);
    m_clips.load(known, [&notes = m_state.notes(), id, title = row.title](std::stop_token stop) {
        return readNote(notes, id, title, std::move(stop));
    });
}

// A clip may also be taken off in the composer, fail, or go out with a prompt.
void AttachableNotes::followClips() {
    m_appleNoteClipIDs.removeIf([this](const QHash<QString, QUuid>::iterator& clip) {
        return !m_attachments.find(clip.value());
    });
    for (Row& row : m_all)
        row.isChecked = isAttached(row);
    for (int at = 0; at < count(); ++at) {
        Row& row = m_rows[static_cast<std::size_t>(at)];
        const bool isNow = isAttached(row);
        if (std::exchange(row.isChecked, isNow) != isNow)
            emit dataChanged(index(at), index(at), {CheckedRole});
    }
}

int AttachableNotes::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant AttachableNotes::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    return Roles::table.value(m_rows[static_cast<std::size_t>(index.row())], role);
}

QHash<int, QByteArray> AttachableNotes::roleNames() const {
    return Roles::table.roleNames();
}

} // namespace vorq
