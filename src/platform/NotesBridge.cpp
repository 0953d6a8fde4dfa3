#include "platform/NotesBridge.h"

#include "support/text/Text.h"

namespace vorq {

QCoro::Task<std::vector<AppleNoteSummary>> NoNotesBridge::listNotes(int, std::stop_token) {
    co_return {};
}

QCoro::Task<std::optional<QString>> NoNotesBridge::noteBody(QString, std::stop_token) {
    co_return std::nullopt;
}

QCoro::Task<NotesBridge::Created> NoNotesBridge::createNote(QString, QString, std::stop_token) {
    co_return std::unexpected(QString());
}

QCoro::Task<NotesBridge::Appended> NoNotesBridge::appendToNote(QString, QString, std::stop_token) {
    co_return std::unexpected(QString());
}

QCoro::Task<NotesBridge::Reached> NoNotesBridge::reach(std::stop_token) {
    co_return std::unexpected(QString());
}

namespace notesbridge {

QString inOneLine(QStringView text) {
    QString line;
    for (const QChar unit : text)
        line += isNewline(unit.unicode()) ? QChar(u' ') : unit;
    return trimmed(line).toString();
}

QString withTitle(const QString& title, const QString& body) {
    if (trimmed(body).isEmpty()) return title;
    if (trimmed(firstLine(body)) == title) return body;
    return title + "\n\n" + body;
}

} // namespace notesbridge
} // namespace vorq
