// Commands of the panel that save, while another program holds the library.

#include "doubles/desktop/PanelProgram.h"
#include "library/store/LibraryStore.h"

#include <QDir>

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace vorq::desktop {
namespace {

using testing::SizeIs;

class PanelLibrary : public testing::Test {
  protected:
    PanelLibrary() {
        const QString folder = m_store.folder();
        QDir().mkpath(folder);
        m_held = ::open(qPrintable(folder), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        vorq.start();
        vorq.pressHotKey();
        vorq.waitForPanel();
        vorq.waitForGreeting();
        vorq.session.type("Why did farmers need no manure?");
        vorq.session.key({"Return"});
        EXPECT_THAT(vorq.waitForReply(3), SizeIs(3));
    }
    ~PanelLibrary() override { ::close(m_held); }

    void holdLibrary() const { ASSERT_EQ(::flock(m_held, LOCK_EX), 0); }
    void releaseLibrary() const { ::flock(m_held, LOCK_UN); }

    // What the panel answers to the command.
    QString said(const QString& command, qsizetype entries) {
        vorq.session.type(command);
        vorq.session.key({"Return"});
        return vorq.waitForReply(entries).back();
    }

    PanelProgram vorq;
    LibraryStore m_store{vorq.session.home() + "/.local/share"};
    int m_held = -1;
};

TEST_F(PanelLibrary, AChatIsSaidSavedWhenItIsOnTheDisk) {
    holdLibrary();
    EXPECT_EQ(said("save chat", 5), "Vorq: Not saved yet: another program is using the library. "
                                    "Vorq keeps trying.");
    EXPECT_THAT(m_store.loadChats(), SizeIs(0));
    releaseLibrary();
    EXPECT_EQ(vorq.waitForReply(6).back(), "Vorq: Saved to History.");
    EXPECT_THAT(m_store.loadChats(), SizeIs(1));
}

TEST_F(PanelLibrary, AChatThatIsHeldUpIsWrittenAtQuitting) {
    holdLibrary();
    (void)said("save chat", 5);
    (void)run(VORQ_PROGRAM, "", {"quit"}, vorq.session.environment());
    ::usleep(500'000);
    EXPECT_TRUE(vorq.program().isRunning()) << "it waits for the other program";
    releaseLibrary();
    DesktopSession::waitUntil("the end", [&] { return !vorq.program().isRunning(); });
    EXPECT_THAT(m_store.loadChats(), SizeIs(1));
}

} // namespace
} // namespace vorq::desktop
