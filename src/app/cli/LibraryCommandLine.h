#pragma once

#include "library/records/HubArea.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

namespace vorq {

// What the commands for notes and chats are asked. An id may be cut short.

struct ListNotes {
    std::optional<HubArea> area; ///< nothing for all
    bool asJson = false;
    bool operator==(const ListNotes&) const = default;
};

struct ShowNote {
    QString id;
    bool asJson = false;
    bool operator==(const ShowNote&) const = default;
};

struct SaveNote {
    QString text;  ///< "" to read standard input
    QString title; ///< "" for the first line of the text
    HubArea area = HubArea::Personal;
    bool isPlain = false; ///< the text is no Markdown
    bool operator==(const SaveNote&) const = default;
};

enum class NoteFormat { Markdown, Plain, Rtf };

struct ExportNote {
    QString id;
    NoteFormat format = NoteFormat::Markdown;
    QString output; ///< "" for standard output
    bool operator==(const ExportNote&) const = default;
};

struct ListChats {
    bool asJson = false;
    bool operator==(const ListChats&) const = default;
};

struct ShowChat {
    QString id;
    bool asJson = false;
    bool operator==(const ShowChat&) const = default;
};

using LibraryCommand = std::variant<ListNotes, ShowNote, SaveNote, ExportNote, ListChats, ShowChat>;

/// A text for standard output.
struct LibraryHelp {
    QString text;
};

/// What cannot be understood, as a sentence.
struct LibraryMisuse {
    QString message;
};

/// What the arguments ask for, from the verb "notes" or "chats" on.
[[nodiscard]] std::variant<LibraryCommand, LibraryHelp, LibraryMisuse>
parseLibraryCommand(const QStringList& arguments);

} // namespace vorq
