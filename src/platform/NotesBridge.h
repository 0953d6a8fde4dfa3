#pragma once

#include <QString>

#include <expected>
#include <optional>
#include <vector>

namespace vorq {

/// A note of the notes application.
struct AppleNoteSummary {
    QString id; ///< the application's own; opaque
    QString title;

    bool operator==(const AppleNoteSummary&) const = default;
};

/// The user's notes application. Texts are plain text with line feeds.
///
/// Every operation blocks until the application has answered, or for some seconds if it does not.
/// They may be called on any thread, one at a time for one object.
class NotesBridge {
  public:
    /// A sentence for the user; "" if there is nothing to say but that it failed.
    using Error = QString;

    NotesBridge() = default;
    NotesBridge(const NotesBridge&) = delete;
    NotesBridge& operator=(const NotesBridge&) = delete;
    virtual ~NotesBridge() = default;

    /// Notes in the application's order, at least one and at most a hundred of them whatever the
    /// limit. Empty if there are none or the application cannot be asked.
    [[nodiscard]] virtual std::vector<AppleNoteSummary> listNotes(int limit) = 0;

    /// The text of a note. Nothing if that is blank or there is no such note.
    [[nodiscard]] virtual std::optional<QString> noteBody(const QString& id) = 0;

    /// Gives the identity of the new note. An empty title becomes "Untitled".
    [[nodiscard]] virtual std::expected<QString, Error> createNote(const QString& title,
                                                                   const QString& body) = 0;

    /// Adds the trimmed text below an empty line; a blank one is an error.
    [[nodiscard]] virtual std::expected<void, Error> appendToNote(const QString& id,
                                                                  const QString& body) = 0;
};

/// No notes application: nothing can be read or made, and there is nothing more to say of it.
class NoNotesBridge : public NotesBridge {
  public:
    [[nodiscard]] std::vector<AppleNoteSummary> listNotes(int) override { return {}; }
    [[nodiscard]] std::optional<QString> noteBody(const QString&) override { return {}; }
    [[nodiscard]] std::expected<QString, Error> createNote(const QString&,
                                                           const QString&) override {
        return std::unexpected(QString());
    }
    [[nodiscard]] std::expected<void, Error> appendToNote(const QString&, const QString&) override {
        return std::unexpected(QString());
    }
};

/// What the forms of the bridge have in common.
namespace notesbridge {

inline constexpr int mostNotes = 100;

inline const QString untitled = QStringLiteral("Untitled");
inline const NotesBridge::Error nothingToAppend = QStringLiteral("Nothing to append.");
inline const NotesBridge::Error appendFailed =
    QStringLiteral("Couldn’t update the note. It may have been deleted — press ⌘⇧S again to start "
                   "a new note.");

/// The text with each line break made one blank.
[[nodiscard]] QString inOneLine(QStringView text);

/// The title above the text, unless the text begins with it already.
[[nodiscard]] QString withTitle(const QString& title, const QString& body);

} // namespace notesbridge
} // namespace vorq
