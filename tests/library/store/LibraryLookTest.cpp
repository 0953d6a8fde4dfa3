// Two programs work on one file, and one of them reads it in steps between which anything happens.

#include "doubles/library/LibraryFolder.h"
#include "library/store/LibraryFile.h"

#include <QSet>

#include <array>
#include <gmock/gmock.h>
#include <random>
#include <thread>

namespace vorq {
namespace {

using namespace std::chrono_literals;

constexpr unsigned lookSequences = 40;
constexpr int lookSteps = 150;

QStringList wordsOf(const std::vector<SavedNote>& notes) {
    QStringList words;
    for (const SavedNote& note : notes)
        words += note.thoughts;
    return words;
}

// A program with the notes in memory. Each of its changes is saved at once.
struct NotesProgram {
    LibraryStore store;
    LibraryFile<SavedNote> file{store};
    std::vector<SavedNote> notes;

    explicit NotesProgram(const QString& root) : store(root, 0ms) {}

    void save() { adopt(file.save(notes)); }
    void takeIn() { adopt(file.takeIn(notes)); }
    void retry() { adopt(file.retry(notes, 0ms, true)); }
    void reload() { notes = file.load(notes); }
    void adopt(std::optional<std::vector<SavedNote>> changed) {
        if (changed) notes = *std::move(changed);
    }
};

class LibraryLookCampaign : public LibraryFolder {
  protected:
    void run(unsigned seed, bool mayDamage) {
        QDir(m_folder).removeRecursively();
        m_random.seed(seed);
        m_ours.emplace(m_root.path());
        m_theirs.emplace(m_root.path());
        m_look.reset();
        m_found.reset();
        m_lock.reset();
        m_alive.clear();
        m_dropped.clear();
        m_story = "sequence " + QString::number(seed) + ":";
        for (int step = 0; step < lookSteps; ++step)
            doAnything(mayDamage);
        settle();
        EXPECT_FALSE(m_ours->file.unsaved() || m_theirs->file.unsaved()) << qPrintable(m_story);
        // What was in a damaged file alone is gone.
        if (mayDamage) return;
        expectAllAlive(m_ours->notes, "ours");
        expectAllAlive(m_theirs->notes, "theirs");
        expectAllAlive(m_store.loadNotes(), "in the file");
    }

    int m_counted = 0; // looks that counted
    int m_vain = 0;    // and those that did not

  private:
    unsigned below(std::size_t end) {
        return std::uniform_int_distribution<unsigned>(0, static_cast<unsigned>(end) - 1)(m_random);
    }

    void doAnything(bool mayDamage) {
        switch (below(mayDamage ? 14 : 13)) {
        case 0:
            return change(*m_ours, "ours");
        case 1:
        case 2:
        case 3:
            return change(*m_theirs, "theirs");
        case 4:
        case 5:
            return beginLook();
        case 6:
        case 7:
        case 8:
            return runLook();
        case 9:
        case 10:
            return endLook();
        case 11:
            return toggleLock();
        case 12:
            m_story += " again";
            return below(2) ? m_ours->retry() : m_ours->reload();
        default:
            m_story += " damage";
            return put("[{");
        }
    }

    // Of a third program.
    void toggleLock() {
        m_story += " lock";
        if (m_lock)
            m_lock.reset();
        else
            m_lock.emplace(*m_store.lock(0ms));
    }

    void change(NotesProgram& program, const QString& who) {
        const QString word = QString::number(++m_words);
        m_story += ' ' + who + ':' + word;
        const unsigned kind = below(4);
        if (program.notes.empty() || kind < 2) {
            program.notes.insert(program.notes.begin(), oneNote("note").front());
            program.notes.front().thoughts = word;
            m_alive += word;
        } else {
            const auto note = program.notes.begin() + below(program.notes.size());
            m_dropped += note->thoughts;
            if (kind == 2) {
                note->thoughts = word;
                m_alive += word;
            } else {
                program.notes.erase(note);
            }
        }
        program.save();
    }

    void beginLook() {
        if (m_look) return;
        m_story += " begin";
        m_look = m_ours->file.look(m_ours->notes);
    }

    // What the simple way gives at the same moment is remembered, too.
    void runLook() {
        if (!m_look || m_found) return;
        m_story += " run";
        std::thread thread([this] { m_found = m_look->run(); });
        LibraryFile<SavedNote> twin = m_ours->file;
        m_simple = twin.takeIn(m_ours->notes);
        m_isDueSimply = twin.isDue();
        m_isUnsavedSimply = twin.unsaved().has_value();
        thread.join();
    }

    void endLook() {
        if (!m_found) return;
        m_story += " end";
        if (m_ours->file.isCurrent(*m_found)) {
            ++m_counted;
            const auto list = m_ours->file.takeIn(*std::move(m_found));
            EXPECT_EQ(list.has_value(), m_simple.has_value()) << qPrintable(m_story);
            if (list && m_simple)
                EXPECT_EQ(wordsOf(*list), wordsOf(*m_simple)) << qPrintable(m_story);
            EXPECT_EQ(m_ours->file.isDue(), m_isDueSimply) << qPrintable(m_story);
            EXPECT_EQ(m_ours->file.unsaved().has_value(), m_isUnsavedSimply) << qPrintable(m_story);
            m_ours->adopt(list);
            if (m_ours->file.isDue()) m_ours->save();
        } else {
            ++m_vain;
        }
        m_look.reset();
        m_found.reset();
    }

    void settle() {
        m_story += " settle";
        m_lock.reset();
        for (int round = 0; round < 3; ++round)
            for (NotesProgram* program : {&*m_ours, &*m_theirs}) {
                program->retry();
                program->save();
            }
        m_ours->takeIn();
    }

    void expectAllAlive(const std::vector<SavedNote>& notes, const char* where) {
        const QStringList words = wordsOf(notes);
        const QSet<QString> held(words.begin(), words.end());
        const QSet<QString> lost = m_alive - m_dropped - held;
        EXPECT_TRUE(lost.isEmpty()) << qPrintable(m_story) << "\nlost " << where << ": "
                                    << qPrintable(lost.values().join(' '));
    }

    std::mt19937 m_random;
    std::optional<NotesProgram> m_ours;
    std::optional<NotesProgram> m_theirs;
    std::optional<LibraryLook<SavedNote>> m_look;
    std::optional<LibraryLook<SavedNote>::Found> m_found;
    std::optional<std::vector<SavedNote>> m_simple;
    bool m_isDueSimply = false;
    bool m_isUnsavedSimply = false;
    std::optional<FolderLock> m_lock;
    int m_words = 0;
    QSet<QString> m_alive;   // what was ever written
    QSet<QString> m_dropped; // what somebody who had it removed or wrote over
    QString m_story;
};

TEST_F(LibraryLookCampaign, LooksInStepsLoseNothingAndFindWhatTheSimpleWayFinds) {
    for (unsigned seed = 1; seed <= lookSequences && !HasFailure(); ++seed)
        run(seed, false);
    EXPECT_GT(m_counted, 30);
    EXPECT_GT(m_vain, 30);
}

TEST_F(LibraryLookCampaign, AmongDamagedFilesTheyFindWhatTheSimpleWayFinds) {
    for (unsigned seed = 1; seed <= lookSequences && !HasFailure(); ++seed)
        run(seed, true);
    EXPECT_GT(m_counted, 30);
    EXPECT_GT(m_vain, 30);
}

} // namespace
} // namespace vorq
