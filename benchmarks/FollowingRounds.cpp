#include "FollowingRounds.h"

#include "Rounds.h"
#include "areas/LibraryFollower.h"
#include "areas/LibraryLists.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace vorq::bench {
namespace {

double millisecondsOfThread() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

// The program that follows, and another one that saves.
class FollowingRounds {
  public:
    explicit FollowingRounds(const std::vector<SavedNote>& notes) {
        m_store.save(notes);
        m_list.replace(m_file.load({}));
        m_elsewhere = m_otherFile.load({});
    }

    double follow() {
        saveElsewhere();
        const double start = millisecondsOfThread();
        m_follower.look();
        while (!std::exchange(m_isTold, false))
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return checked(millisecondsOfThread() - start);
    }

    double readAtOnce() {
        saveElsewhere();
        const double start = millisecondsOfThread();
        if (auto changed = m_file.takeIn(m_list.records())) m_list.replace(*std::move(changed));
        return checked(millisecondsOfThread() - start);
    }

  private:
    void saveElsewhere() {
        SavedNote note = m_elsewhere.front();
        note.id = QUuid::createUuid();
        m_elsewhere.insert(m_elsewhere.begin(), std::move(note));
        m_otherFile.save(m_elsewhere);
    }

    double checked(double milliseconds) const {
        if (m_list.records() != m_elsewhere) std::abort();
        return milliseconds;
    }

    QTemporaryDir m_root{QDir::currentPath() + "/bench-library-XXXXXX"};
    LibraryStore m_store{m_root.path()};
    LibraryFile<SavedNote> m_file{m_store};
    LibraryFile<SavedNote> m_otherFile{m_store};
    std::vector<SavedNote> m_elsewhere;
    NoteList m_list;
    bool m_isTold = false;
    LibraryFollower<SavedNote> m_follower{m_file, m_list, [](auto list) { return list; },
                                          [this](auto changed) {
                                              if (changed) m_list.replace(*std::move(changed));
                                              m_isTold = true;
                                          }};
};

void printTimes(const char* name, std::vector<double> times) {
    std::ranges::sort(times);
    std::printf("  %-12s least %7.2f ms  median %7.2f ms  most %7.2f ms\n", name, times.front(),
                times[times.size() / 2], times.back());
}

} // namespace

void printFollowing(const std::string& caseName, const std::vector<SavedNote>& notes, int rounds) {
    if (!isWanted(caseName)) return;
    FollowingRounds program(notes);
    std::vector<double> following;
    std::vector<double> readingAtOnce;
    for (int round = 0; round < rounds; ++round) {
        following.push_back(program.follow());
        readingAtOnce.push_back(program.readAtOnce());
    }
    std::printf("\n%s, %d rounds in turn\n", caseName.c_str(), rounds);
    printTimes("following", std::move(following));
    printTimes("at once", std::move(readingAtOnce));
}

} // namespace vorq::bench
