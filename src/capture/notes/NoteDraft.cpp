#include "capture/notes/NoteDraft.h"

#include "capture/source/CaptureLogging.h"
#include "library/records/DraftTitle.h"
#include "support/text/Text.h"

#include <QPointer>

#include <utility>

namespace vorq {

QCoro::Task<NoteDraft::Saved> NoteDraft::saveHighlightIntoAppleNotesDraft(QString text,
                                                                          std::stop_token stop) {
    const QPointer<NoteDraft> self(this);
    const QString body = trimmed(text).toString();
    if (body.isEmpty())
        co_return std::unexpected(tr("Highlight text first, then save it as a note."));
    if (!m_id.isEmpty()) {
        const auto appended = co_await m_notes.appendToNote(m_id, body, stop);
        if (!self || stop.stop_requested()) co_return std::unexpected(QString());
        if (appended) co_return Saved();
        qCWarning(captureLog, "Vorq note append failed (%s); creating a new draft.",
                  qUtf8Printable(appended.error()));
        m_id.clear();
    }
    const auto created = co_await m_notes.createNote(draftTitle(body), body, stop);
    if (!self) co_return std::unexpected(QString());
    if (!created) co_return std::unexpected(created.error());
    m_id = *created;
    co_return Saved();
}

bool NoteDraft::pushAppleNoteDraft() {
    const QString id = std::exchange(m_id, QString());
    if (id.isEmpty()) return false;
    qCInfo(captureLog, "Vorq note draft pushed — sealed id=%s", qUtf8Printable(id));
    return true;
}

} // namespace vorq
