#pragma once

#include "platform/NotesBridge.h"

namespace vorq {

/// A notes application that is asked by calls that block until it has answered, or for some seconds
/// if it does not: what stands behind a `ThreadedNotesBridge`. Each operation is that of
/// `NotesBridge`. Any thread, one at a time.
class BlockingNotes {
  public:
    using Error = NotesBridge::Error;
    using Created = NotesBridge::Created;
    using Appended = NotesBridge::Appended;
    using Reached = NotesBridge::Reached;

    BlockingNotes() = default;
    BlockingNotes(const BlockingNotes&) = delete;
    BlockingNotes& operator=(const BlockingNotes&) = delete;
    virtual ~BlockingNotes() = default;

    [[nodiscard]] virtual std::vector<AppleNoteSummary> listNotes(int limit) = 0;
    [[nodiscard]] virtual std::optional<QString> noteBody(const QString& id) = 0;
    [[nodiscard]] virtual Created createNote(const QString& title, const QString& body) = 0;
    [[nodiscard]] virtual Appended appendToNote(const QString& id, const QString& body) = 0;
    [[nodiscard]] virtual Reached reach() = 0;
};

} // namespace vorq
