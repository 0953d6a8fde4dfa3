#pragma once

#include <QString>

#include <expected>

namespace vorq {

/// The user's application for notes, as far as new notes go there.
class NoteExport {
  public:
    NoteExport() = default;
    NoteExport(const NoteExport&) = delete;
    NoteExport& operator=(const NoteExport&) = delete;
    virtual ~NoteExport() = default;

    /// Gives the id of the new note, or a sentence for the user; "" if there is nothing to say but
    /// that it failed.
    virtual std::expected<QString, QString> createNote(const QString& title,
                                                       const QString& body) = 0;
};

/// No application for notes: nothing can be exported.
class NoNoteExport final : public NoteExport {
  public:
    std::expected<QString, QString> createNote(const QString&, const QString&) override {
        return std::unexpected(QString());
    }
};

} // namespace vorq
