#pragma once

#include <QCoroTask>
#include <QString>

#include <expected>
#include <optional>
#include <stop_token>
#include <vector>

namespace vorq {

/// A note of the notes application.
struct AppleNoteSummary {
    QString id; ///< the application's own; opaque
    QString title;

    bool operator==(const AppleNoteSummary&) const = default;
};

/// The user's notes application. Texts are plain text with line feeds. Main thread only.
///
/// An application that hangs keeps whoever waits for its answer waiting for some seconds, and
/// nobody else. Operations are done one after the other, in the order in which they were asked for.
/// One that is stopped before its turn does nothing and gives nothing; one that has begun goes on,
/// even when the bridge or whoever asked is gone: it may be the user's text on its way.
class NotesBridge {
  public:
    /// A sentence for the user; "" if there is nothing to say but that it failed.
    using Error = QString;
    using Created = std::expected<QString, Error>;
    using Appended = std::expected<void, Error>;
    /// The name of the application for people, in English.
    using Reached = std::expected<QString, Error>;

    NotesBridge() = default;
    NotesBridge(const NotesBridge&) = delete;
    NotesBridge& operator=(const NotesBridge&) = delete;
    virtual ~NotesBridge() = default;

    /// Notes in the application's order, at least one and at most a hundred of them whatever the
    /// limit. Empty if there are none or the application cannot be asked.
    [[nodiscard]] virtual QCoro::Task<std::vector<AppleNoteSummary>>
    listNotes(int limit, std::stop_token stop) = 0;

    /// The text of a note. Nothing if that is blank or there is no such note.
    [[nodiscard]] virtual QCoro::Task<std::optional<QString>> noteBody(QString id,
                                                                       std::stop_token stop) = 0;

    /// Gives the identity of the new note. An empty title becomes "Untitled".
    [[nodiscard]] virtual QCoro::Task<Created> createNote(QString title, QString body,
                                                          std::stop_token stop) = 0;

    /// Adds the trimmed text below an empty line; a blank one is an error.
    [[nodiscard]] virtual QCoro::Task<Appended> appendToNote(QString id, QString body,
                                                             std::stop_token stop) = 0;

    /// Whether notes can be kept. It makes and changes none, and starts no application.
    [[nodiscard]] virtual QCoro::Task<Reached> reach(std::stop_token stop) = 0;
};

/// No notes application: nothing can be read or made, and there is nothing more to say of it.
class NoNotesBridge : public NotesBridge {
  public:
    [[nodiscard]] QCoro::Task<std::vector<AppleNoteSummary>> listNotes(int,
                                                                       std::stop_token) override;
    [[nodiscard]] QCoro::Task<std::optional<QString>> noteBody(QString, std::stop_token) override;
    [[nodiscard]] QCoro::Task<Created> createNote(QString, QString, std::stop_token) override;
    [[nodiscard]] QCoro::Task<Appended> appendToNote(QString, QString, std::stop_token) override;
    [[nodiscard]] QCoro::Task<Reached> reach(std::stop_token) override;
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
