#include "platform/portable/ThreadedNotesBridge.h"

#include "platform/portable/BlockingNotes.h"

#include <utility>

namespace vorq {

ThreadedNotesBridge::ThreadedNotesBridge(std::shared_ptr<BlockingNotes> notes)
    : m_notes(std::move(notes)) {}

ThreadedNotesBridge::~ThreadedNotesBridge() = default;

QCoro::Task<std::vector<AppleNoteSummary>> ThreadedNotesBridge::listNotes(int limit,
                                                                          std::stop_token stop) {
    const auto list = [notes = m_notes, limit](const std::stop_token& stopped) {
        return stopped.stop_requested() ? std::vector<AppleNoteSummary>() : notes->listNotes(limit);
    };
    return m_thread.run(list, std::move(stop));
}

QCoro::Task<std::optional<QString>> ThreadedNotesBridge::noteBody(QString id,
                                                                  std::stop_token stop) {
    const auto read = [notes = m_notes, id](const std::stop_token& stopped) {
        return stopped.stop_requested() ? std::nullopt : notes->noteBody(id);
    };
    return m_thread.run(read, std::move(stop));
}

QCoro::Task<NotesBridge::Created> ThreadedNotesBridge::createNote(QString title, QString body,
                                                                  std::stop_token stop) {
    const auto create = [notes = m_notes, title, body](const std::stop_token& stopped) -> Created {
        if (stopped.stop_requested()) return std::unexpected(Error());
        return notes->createNote(title, body);
    };
    return m_thread.run(create, std::move(stop));
}

QCoro::Task<NotesBridge::Appended> ThreadedNotesBridge::appendToNote(QString id, QString body,
                                                                     std::stop_token stop) {
    const auto append = [notes = m_notes, id, body](const std::stop_token& stopped) -> Appended {
        if (stopped.stop_requested()) return std::unexpected(Error());
        return notes->appendToNote(id, body);
    };
    return m_thread.run(append, std::move(stop));
}

QCoro::Task<NotesBridge::Reached> ThreadedNotesBridge::reach(std::stop_token stop) {
    const auto ask = [notes = m_notes](const std::stop_token& stopped) -> Reached {
        if (stopped.stop_requested()) return std::unexpected(Error());
        return notes->reach();
    };
    return m_thread.run(ask, std::move(stop));
}

} // namespace vorq
