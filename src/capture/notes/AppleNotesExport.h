#pragma once

#include "platform/portable/BlockingNotes.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace vorq {

/// Whether the user lets Vorq control the notes application.
enum class AutomationPermission : std::uint8_t { Allowed, Denied, Unknown };

/// The scripts that Apple Notes understands, and what their answers mean. Pure functions.
namespace applenotes {

/// The text as HTML of a note: one element on one line.
[[nodiscard]] QString notesHTML(QStringView text);

/// The text within a string literal of AppleScript; line breaks become blanks.
[[nodiscard]] QString escaped(QStringView text);

/// Makes a note in the first account that takes it, and answers its identity.
[[nodiscard]] QString createNoteScript(QStringView title, QStringView body);
/// Answers "ok", or fails.
[[nodiscard]] QString appendToNoteScript(QStringView id, QStringView body);
/// Answers lines of identity, tab and title.
[[nodiscard]] QString listNotesScript(int limit);
/// Answers the plain text, or nothing.
[[nodiscard]] QString noteTextScript(QStringView id);
/// Answers the HTML, or nothing.
[[nodiscard]] QString noteHTMLScript(QStringView id);

/// The notes that the answer to listNotesScript() tells of.
[[nodiscard]] std::vector<AppleNoteSummary> parseNotesList(QStringView output);

/// The text that HTML of a note shows, on one line. Nothing if it shows none.
[[nodiscard]] std::optional<QString> cleanNoteHTML(QStringView html);

} // namespace applenotes

/// Apple Notes, by scripts.
class AppleNotesExport : public BlockingNotes {
  public:
    /// Runs a script and gives its answer, "" if it has none. Nothing if it failed, which the
    /// runner logs: nobody else knows why.
    using ScriptRunner = std::function<std::optional<QString>(const QString& script)>;
    /// Asks for the permission, if need be the user, and waits for the answer.
    using PermissionRequest = std::function<AutomationPermission()>;

    AppleNotesExport(ScriptRunner runAppleScriptReturning, PermissionRequest requestAutomation);

    [[nodiscard]] std::vector<AppleNoteSummary> listNotes(int limit) override;
    [[nodiscard]] std::optional<QString> noteBody(const QString& id) override;
    [[nodiscard]] std::expected<QString, Error> createNote(const QString& title,
                                                           const QString& body) override;
    [[nodiscard]] std::expected<void, Error> appendToNote(const QString& id,
                                                          const QString& body) override;
    [[nodiscard]] Reached reach() override;

  private:
    ScriptRunner m_run;
    PermissionRequest m_requestAutomation;
};

} // namespace vorq
