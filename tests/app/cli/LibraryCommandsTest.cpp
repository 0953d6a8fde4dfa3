// The commands for notes and chats where the user may not do what they ask.

#include "app/cli/LibraryCommands.h"
#include "app/cli/Terminal.h"
#include "doubles/async/ForkAlone.h"
#include "library/store/LibraryStore.h"
#include "platform/testing/ManualClock.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vorq {
namespace {

using testing::HasSubstr;

class LibraryCommandsOfAnother : public testing::Test {
  protected:
    LibraryCommandsOfAnother() {
        LibraryStore(m_root.path()).save(std::vector<SavedNote>());
        ::chmod(qPrintable(m_root.path()), 0755);
    }
    ~LibraryCommandsOfAnother() override { ::chmod(qPrintable(m_folder), 0755); }

    struct Outcome {
        int status = -1;
        std::string err;
    };

    // Root may do anything, so it becomes somebody else for this.
    [[nodiscard]] Outcome run(const LibraryCommand& command) const {
        int ends[2];
        if (::pipe(ends) != 0) return {};
        std::fflush(nullptr);
        const pid_t child = forkAlone();
        if (child == 0) {
            constexpr uid_t nobody = 65534;
            ::dup2(ends[1], STDERR_FILENO);
            if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0)) ::_exit(99);
            ManualClock clock;
            Terminal terminal;
            ::_exit(LibraryCommands(m_root.path(), clock, terminal).run(command));
        }
        ::close(ends[1]);
        Outcome outcome;
        std::array<char, 4096> text{};
        for (ssize_t size = 0; (size = ::read(ends[0], text.data(), text.size())) > 0;)
            outcome.err.append(text.data(), static_cast<std::size_t>(size));
        ::close(ends[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        outcome.status = WEXITSTATUS(status);
        return outcome;
    }

    QTemporaryDir m_root;
    QString m_folder = m_root.filePath("Vorq/Library");
};

TEST_F(LibraryCommandsOfAnother, AFolderThatMayNotBeEnteredIsNoEmptyList) {
    ASSERT_EQ(::chmod(qPrintable(m_folder), 0000), 0);
    for (const LibraryCommand& command :
         {LibraryCommand(ListNotes{}), LibraryCommand(ListChats{})}) {
        const Outcome outcome = run(command);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, HasSubstr(".json cannot be read: Permission denied."));
    }
}

TEST_F(LibraryCommandsOfAnother, ASaveIntoAFolderThatIsReadOnlySaysSo) {
    ASSERT_EQ(::chmod(qPrintable(m_folder + "/saved-notes.json"), 0644), 0);
    ASSERT_EQ(::chmod(qPrintable(m_folder), 0555), 0);
    SaveNote note;
    note.text = "Rivers flow.";
    const Outcome outcome = run(note);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "The note could not be saved in " + m_folder.toStdString() +
                               ": Permission denied.\n");
}

class ExportOfAnother : public LibraryCommandsOfAnother {
  protected:
    ExportOfAnother() {
        SavedNote note;
        note.id = m_id;
        note.text = "Rivers flow.";
        LibraryStore(m_root.path()).save(std::vector{note});
        ::chmod(qPrintable(m_folder + "/saved-notes.json"), 0644);
    }
    [[nodiscard]] Outcome exportTo(const QString& file) const {
        return run(ExportNote{m_id.toString(QUuid::WithoutBraces), NoteFormat::Markdown, file});
    }

    QUuid m_id = QUuid::createUuid();
};

// It would be cut short by whatever comes between.
TEST_F(ExportOfAnother, AFileThatCannotBeReplacedIsNotWrittenInto) {
    const QString path = m_root.filePath("out.md");
    QFile former(path);
    ASSERT_TRUE(former.open(QIODevice::ReadWrite));
    former.write("former");
    former.close();
    ASSERT_EQ(::chmod(qPrintable(path), 0666), 0);
    ASSERT_EQ(::chmod(qPrintable(m_root.path()), 0555), 0);
    const Outcome outcome = exportTo(path);
    ::chmod(qPrintable(m_root.path()), 0755);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, path.toStdString() + " could not be written: Permission denied.\n");
    ASSERT_TRUE(former.open(QIODevice::ReadOnly));
    EXPECT_EQ(former.readAll(), "former");
}

TEST_F(ExportOfAnother, WhatIsNoFileIsWrittenInto) {
    const QString pipe = m_root.filePath("out");
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    ASSERT_EQ(::chmod(qPrintable(pipe), 0666), 0);
    const int end = ::open(qPrintable(pipe), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    EXPECT_EQ(exportTo(pipe).status, 0);
    std::array<char, 64> text{};
    EXPECT_GT(::read(end, text.data(), text.size()), 0);
    EXPECT_THAT(text.data(), HasSubstr("Rivers flow."));
    ::close(end);
}

} // namespace
} // namespace vorq
