// The local backend at login, chosen in the menu of the built program or by its command, with the
// real backend in a session without systemd.

#include "doubles/desktop/MenuProgram.h"
#include "platform/linux/desktop/LoopbackAddress.h"
#include "platform/linux/desktop/UserProcesses.h"

#include <QFile>

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq::desktop {
namespace {

using testing::HasSubstr;

// A port that nobody listens at.
int freePort() {
    const int descriptor = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* name = reinterpret_cast<sockaddr*>(&address);
    socklen_t size = sizeof address;
    EXPECT_EQ(::bind(descriptor, name, size), 0);
    EXPECT_EQ(::getsockname(descriptor, name, &size), 0);
    ::close(descriptor);
    return ntohs(address.sin_port);
}

class BackendAtLoginTest : public MenuProgramTest {
  protected:
    BackendAtLoginTest() { m_local.insert("VORQ_API_BASE_URL", m_address); }

    [[nodiscard]] QString entryFile() const {
        return m_session.home() + "/.config/autostart/com.vorq.gateway.desktop";
    }
    [[nodiscard]] QString execLine() const {
        QFile file(entryFile());
        if (!file.open(QIODevice::ReadOnly)) return {};
        for (const QByteArray& line : file.readAll().split('\n'))
            if (line.startsWith("Exec=")) return QString::fromUtf8(line.sliced(5));
        return {};
    }
    [[nodiscard]] bool answers() const { return LoopbackAddress::of(QUrl(m_address))->accepts(); }
    void waitForAnswer(bool expected) const {
        DesktopSession::waitUntil(expected ? "the backend" : "the end of the backend",
                                  [&] { return answers() == expected; });
    }
    void endBackend() {
        endUserProcesses({VORQ_GATEWAY_PROGRAM, "serve", "--port", QString::number(m_port)});
        waitForAnswer(false);
    }
    // As a person would on the first day.
    [[nodiscard]] std::string signIn() {
        const QByteArray link =
            run(VORQ_GATEWAY_PROGRAM, "", {"handoff"}, m_session.environment()).trimmed();
        return runToEnd({"open", QString::fromUtf8(link)}, m_local).output;
    }

    const int m_port = freePort();
    const QString m_address = u"http://127.0.0.1:%1"_s.arg(m_port);
    const QString m_text = "Start Local Backend at Login";
    QProcessEnvironment m_local;
};

TEST_F(BackendAtLoginTest, ChosenItRunsNowAndAfterTheNextLogin) {
    startInTray("{}", m_local);
    openMenu();
    EXPECT_FALSE(entry(m_text)->isChecked);
    (void)keep("menu-backend");
    choose(m_text);
    waitForAnswer(true);
    EXPECT_EQ(execLine(), QString(VORQ_GATEWAY_PROGRAM " serve --port %1").arg(m_port));
    EXPECT_THAT(signIn(), HasSubstr("Signed in as "));
    openMenu();
    EXPECT_TRUE(entry(m_text)->isChecked);
    closeMenu();
    endBackend();
    // What the desktop does at login.
    m_session.start("/bin/sh", "dash", {"-c", "exec " + execLine()});
    waitForAnswer(true);
}

TEST_F(BackendAtLoginTest, ChosenAgainItIsNoLongerStartedAndGoesOn) {
    startInTray("{}", m_local);
    openMenu();
    choose(m_text);
    waitForAnswer(true);
    openMenu();
    DesktopSession::waitUntil("the mark", [this] { return entry(m_text)->isChecked; });
    choose(m_text);
    DesktopSession::waitUntil("the entry to go", [this] { return !QFile::exists(entryFile()); });
    EXPECT_TRUE(answers());
}

TEST_F(BackendAtLoginTest, ABackendElsewhereIsNotOffered) {
    QProcessEnvironment elsewhere;
    elsewhere.insert("VORQ_API_BASE_URL", "https://vorq.example");
    startInTray("{}", elsewhere);
    openMenu();
    EXPECT_FALSE(entry(m_text).has_value());
    const Ended ended = runToEnd({"enable-backend"}, elsewhere);
    EXPECT_EQ(ended.status, 1);
    EXPECT_THAT(ended.output, HasSubstr("is not on this computer"));
    EXPECT_FALSE(QFile::exists(entryFile()));
}

TEST_F(BackendAtLoginTest, TheCommandsDoTheSameWithoutADisplay) {
    m_local.insert("DISPLAY", "");
    const Ended on = runToEnd({"enable-backend"}, m_local);
    EXPECT_EQ(on.status, 0) << on.output;
    EXPECT_THAT(on.output, HasSubstr("starts at login from now on, and answers at " +
                                     m_address.toStdString()));
    EXPECT_TRUE(answers());
    EXPECT_TRUE(QFile::exists(entryFile()));
    const Ended off = runToEnd({"disable-backend"}, m_local);
    EXPECT_EQ(off.status, 0) << off.output;
    EXPECT_FALSE(QFile::exists(entryFile()));
    EXPECT_TRUE(answers());
}

TEST_F(BackendAtLoginTest, DeletedWithVorqItEndsToo) {
    DesktopProgram& vorq = startInTray("{}", m_local);
    openMenu();
    choose(m_text);
    waitForAnswer(true);
    openMenu();
    choose("Delete Vorq");
    (void)dialog();
    m_session.key({"Tab", "space"});
    DesktopSession::waitUntil("the entry to go", [this] { return !QFile::exists(entryFile()); });
    waitForAnswer(false);
    // What runs was built and not installed, which the user is told.
    DesktopSession::waitUntil("the last word", [this] { return shows("Vorq is deleted"); });
    m_session.key({"Return"});
    DesktopSession::waitUntil("the end", [&] { return !vorq.isRunning(); });
}

} // namespace
} // namespace vorq::desktop
