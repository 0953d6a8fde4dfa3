#pragma once

#include "app/cli/LibraryCommandLine.h"
#include "app/cli/LibraryReader.h"

#include <QByteArray>

namespace vorq {

class Clock;
class Terminal;

/// Notes and chats in a terminal. Only a command that saves writes to the library.
class LibraryCommands {
  public:
    /// Clock and terminal must outlive it.
    LibraryCommands(const QString& applicationSupportFolder, Clock& clock, Terminal& terminal);

    /// Blocks until it is done and gives the exit status: 0, or 1 after an error.
    int run(const LibraryCommand& command);

  private:
    int run(const ListNotes& command);
    int run(const ShowNote& command);
    int run(const SaveNote& command);
    int run(const ExportNote& command);
    int run(const ListChats& command);
    int run(const ShowChat& command);

    [[nodiscard]] std::expected<SavedNote, QString> note(const QString& id) const;
    [[nodiscard]] std::expected<KeptChat, QString> chat(const QString& id) const;
    [[nodiscard]] std::expected<void, QString> keep(const SavedNote& note) const;

    int print(const QByteArray& bytes);
    int fail(const QString& sentence);

    LibraryStore m_store;
    LibraryReader m_reader;
    Clock& m_clock;
    Terminal& m_terminal;
};

} // namespace vorq
