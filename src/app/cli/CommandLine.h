#pragma once

#include "app/cli/LibraryCommandLine.h"
#include "model/Preview.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace vorq {

struct AskArguments {
    QString prompt; ///< "" when only the piped text is to be analysed
    QStringList files;
    QString model; ///< "" for the user's own choice
    bool operator==(const AskArguments&) const = default;
};

struct OpenArguments {
    QString url;
    bool operator==(const OpenArguments&) const = default;
};

/// Lets other programs be read from now on.
struct EnableAccessibility {
    bool operator==(const EnableAccessibility&) const = default;
};

/// Has the backend on this computer start at login from now on, or no longer.
struct SwitchBackend {
    bool isOn = false;
    bool operator==(const SwitchBackend&) const = default;
};

/// Opens or closes what is closed in this release, from now on.
struct SwitchPreview {
    Preview preview = Preview::Hub;
    bool isOn = false;
    bool operator==(const SwitchPreview&) const = default;
};

struct ListPreviews {
    bool operator==(const ListPreviews&) const = default;
};

/// Tests Vorq on this desktop.
struct Doctor {
    bool asJson = false;
    bool operator==(const Doctor&) const = default;
};

/// What the desktop program is asked to do.
enum class Verb {
    Launch,
    Summon,
    Note,
    PushNote,
    Clear,
    Rewrite,
    Toggle,
    Settings,
    Doctor, ///< in a window
    SaveChat,
    Quit
};

/// Whether the verb means a Vorq that runs already, and starts none.
[[nodiscard]] constexpr bool needsRunningProgram(Verb verb) {
    return verb == Verb::SaveChat || verb == Verb::Quit;
}

struct DesktopArguments {
    Verb verb = Verb::Launch;
    QString url; ///< a link to open as well, "" for none
    bool background = false;
    bool launchedAtLogin = false;
    QList<Preview> previews = {}; ///< open in this run
    bool operator==(const DesktopArguments&) const = default;
};

struct ShowText {
    QString text; ///< for standard output
    bool operator==(const ShowText&) const = default;
};

struct UsageError {
    QString message;
    bool operator==(const UsageError&) const = default;
};

using Command =
    std::variant<AskArguments, OpenArguments, LibraryCommand, EnableAccessibility, SwitchBackend,
                 SwitchPreview, ListPreviews, Doctor, DesktopArguments, ShowText, UsageError>;

/// The sentence of the help on a preview.
[[nodiscard]] QString sentenceOn(Preview preview);

/// What the arguments, without the program's name, ask for.
[[nodiscard]] Command parseCommandLine(const QStringList& arguments);

/// The verb of a name such as "push-note"; nothing but those that a command line knows.
[[nodiscard]] std::optional<Verb> verbNamed(const QString& name);

/// As the command line has it; "" for Launch.
[[nodiscard]] QString nameOf(Verb verb);

} // namespace vorq
