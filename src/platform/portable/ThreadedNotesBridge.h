#pragma once

#include "platform/NotesBridge.h"
#include "support/async/BlockingThread.h"

#include <memory>

namespace vorq {

class BlockingNotes;

/// Asks a notes application that blocks on a thread of its own. When it goes it finishes what was
/// asked for and is not stopped. Main thread only.
class ThreadedNotesBridge final : public NotesBridge {
  public:
    explicit ThreadedNotesBridge(std::shared_ptr<BlockingNotes> notes);
    ~ThreadedNotesBridge() override;

    [[nodiscard]] QCoro::Task<std::vector<AppleNoteSummary>>
    listNotes(int limit, std::stop_token stop) override;
    [[nodiscard]] QCoro::Task<std::optional<QString>> noteBody(QString id,
                                                               std::stop_token stop) override;
    [[nodiscard]] QCoro::Task<Created> createNote(QString title, QString body,
                                                  std::stop_token stop) override;
    [[nodiscard]] QCoro::Task<Appended> appendToNote(QString id, QString body,
                                                     std::stop_token stop) override;
    [[nodiscard]] QCoro::Task<Reached> reach(std::stop_token stop) override;

  private:
    std::shared_ptr<BlockingNotes> m_notes;
    BlockingThread m_thread{BlockingThread::AtEnd::Finish};
};

} // namespace vorq
