#include "platform/linux/desktop/LinuxBackendAtLogin.h"

#include "platform/linux/desktop/LoopbackAddress.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

// Something that takes connections on this computer.
class Listener {
  public:
    Listener() : m_descriptor(::socket(AF_INET, SOCK_STREAM, 0)) {
        if (m_descriptor < 0) throw std::runtime_error("no socket");
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* name = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof address;
        EXPECT_EQ(::bind(m_descriptor, name, size), 0);
        EXPECT_EQ(::listen(m_descriptor, 16), 0);
        EXPECT_EQ(::getsockname(m_descriptor, name, &size), 0);
        m_port = ntohs(address.sin_port);
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { ::close(m_descriptor); }

    [[nodiscard]] int port() const { return m_port; }
    [[nodiscard]] QUrl url() const { return QUrl(u"http://127.0.0.1:%1"_s.arg(m_port)); }

  private:
    int m_descriptor;
    int m_port = 0;
};

class LinuxBackendAtLoginTest : public testing::Test {
  protected:
    LinuxBackendAtLoginTest() { qputenv("XDG_RUNTIME_DIR", at("run").toUtf8()); }
    ~LinuxBackendAtLoginTest() override {
        qputenv("PATH", m_path);
        qunsetenv("XDG_RUNTIME_DIR");
    }

    [[nodiscard]] QString at(const QString& path) const { return m_folder.filePath(path); }
    void write(const QString& path, const QByteArray& content) const {
        QDir().mkpath(QFileInfo(at(path)).path());
        QFile file(at(path));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    [[nodiscard]] std::string read(const QString& path) const {
        QFile file(at(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
    }
    [[nodiscard]] LinuxBackendAtLogin backend(const QUrl& address, const QString& gateway) const {
        return LinuxBackendAtLogin({.configurationFolder = at("config"),
                                    .gateway = gateway,
                                    .address = address,
                                    .startLimit = 200ms});
    }
    [[nodiscard]] LinuxBackendAtLogin backend(const QUrl& address) const {
        return backend(address, u"/opt/vorq/bin/vorq-gateway"_s);
    }

    // A systemd of the user that knows the unit, and notes what it is told.
    void runSystemd() const {
        write("run/systemd/private", "");
        write("bin/systemctl", "#!/bin/sh\n"
                               "folder=$(dirname \"$0\")/..\n"
                               "echo \"$*\" >>\"$folder/told\"\n"
                               "wants=$folder/config/systemd/user/default.target.wants\n"
                               "case \"$2\" in\n"
                               "enable) mkdir -p \"$wants\" && ln -s /there \"$wants/$3\" ;;\n"
                               "disable) rm -f \"$wants/$3\" ;;\n"
                               "esac\n");
        qputenv("PATH", at("bin").toUtf8() + ":" + m_path);
    }

    const QByteArray m_path = qgetenv("PATH");
    const QString m_entry = u"config/autostart/com.vorq.gateway.desktop"_s;
    QTemporaryDir m_folder;
    Listener m_listener;
};

TEST(LoopbackAddress, IsOfThisComputerAlone) {
    for (const char* here : {"http://127.0.0.1:8787", "http://localhost:8787", "http://127.1.2.3",
                             "http://[::1]:9000", "HTTP://LOCALHOST"})
        EXPECT_TRUE(LoopbackAddress::of(QUrl(here))) << here;
    for (const char* elsewhere :
         {"http://192.168.1.2:8787", "https://localhost", "http://vorq.example", "http://[::2]",
          "http://0.0.0.0:8787", "http://localhost.example", ""})
        EXPECT_FALSE(LoopbackAddress::of(QUrl(elsewhere))) << elsewhere;
}

TEST_F(LinuxBackendAtLoginTest, IsOfferedOnlyForABackendOnThisComputer) {
    EXPECT_TRUE(backend(m_listener.url()).supported());
    const auto elsewhere = backend(QUrl("https://vorq.example/")).supported();
    ASSERT_FALSE(elsewhere);
    EXPECT_THAT(elsewhere.error().toStdString(), HasSubstr("is not on this computer"));
    EXPECT_FALSE(backend(QUrl("https://vorq.example/")).switchOn());
    const auto missing = backend(m_listener.url(), {}).supported();
    ASSERT_FALSE(missing);
    EXPECT_THAT(missing.error().toStdString(), HasSubstr("no program vorq-gateway"));
    EXPECT_FALSE(QFile::exists(at("config")));
}

TEST_F(LinuxBackendAtLoginTest, WithoutASystemdItIsAnEntry) {
    LinuxBackendAtLogin subject = backend(m_listener.url());
    EXPECT_FALSE(subject.isOn());
    EXPECT_TRUE(subject.switchOn());
    EXPECT_TRUE(subject.isOn());
    const std::string port = std::to_string(m_listener.port());
    EXPECT_THAT(read(m_entry),
                HasSubstr("\nExec=/opt/vorq/bin/vorq-gateway serve --port " + port + "\n"));
    EXPECT_TRUE(subject.switchOff());
    EXPECT_FALSE(subject.isOn());
    EXPECT_FALSE(QFile::exists(at(m_entry)));
    EXPECT_TRUE(subject.switchOff());
}

TEST_F(LinuxBackendAtLoginTest, TheEntryNamesOnlyWhatIsUnusual) {
    LinuxBackendAtLogin usual = backend(QUrl("http://127.0.0.1:8787"), "/a b/vorq-gateway");
    (void)usual.switchOn();
    EXPECT_THAT(read(m_entry), HasSubstr("\nExec=\"/a b/vorq-gateway\" serve\n"));
    (void)backend(QUrl("http://[::1]:8787")).switchOn();
    EXPECT_THAT(read(m_entry), HasSubstr(" serve --host ::1\n"));
}

TEST_F(LinuxBackendAtLoginTest, SwitchedOffByTheDesktopItIsOff) {
    const LinuxBackendAtLogin subject = backend(m_listener.url());
    write(m_entry, "[Desktop Entry]\nExec=x\nHidden=true\n");
    EXPECT_FALSE(subject.isOn());
    write(m_entry, "[Desktop Entry]\nExec=x\nX-GNOME-Autostart-enabled=false\n");
    EXPECT_FALSE(subject.isOn());
}

TEST_F(LinuxBackendAtLoginTest, WithASystemdThatKnowsItItIsTheUnit) {
    runSystemd();
    write(m_entry, "[Desktop Entry]\nExec=x\n");
    LinuxBackendAtLogin subject = backend(QUrl("http://127.0.0.1:8787"));
    const bool answersByItself = LoopbackAddress::of(QUrl("http://127.0.0.1:8787"))->accepts();
    EXPECT_EQ(subject.switchOn().has_value(), answersByItself) << "systemd here starts nothing";
    EXPECT_TRUE(subject.isOn());
    EXPECT_FALSE(QFile::exists(at(m_entry))) << "would start a second one";
    EXPECT_THAT(read("told"), HasSubstr("--user enable vorq-gateway.service\n"));
    if (!answersByItself) EXPECT_THAT(read("told"), HasSubstr("start vorq-gateway.service\n"));
    EXPECT_TRUE(subject.remove());
    EXPECT_THAT(read("told"), HasSubstr("--user stop vorq-gateway.service\n"));
    EXPECT_FALSE(subject.isOn());
}

TEST_F(LinuxBackendAtLoginTest, AtAnotherAddressItIsNotTheUnit) {
    runSystemd();
    LinuxBackendAtLogin subject = backend(m_listener.url());
    EXPECT_TRUE(subject.switchOn());
    EXPECT_TRUE(QFile::exists(at(m_entry)));
    EXPECT_THAT(read("told"), Not(HasSubstr("enable")));
}

TEST_F(LinuxBackendAtLoginTest, AUnitIsForgottenWhereNoSystemdRuns) {
    const QString link = at("config/systemd/user/default.target.wants/vorq-gateway.service");
    QDir().mkpath(QFileInfo(link).path());
    ASSERT_TRUE(QFile::link("/there", link));
    LinuxBackendAtLogin subject = backend(m_listener.url());
    EXPECT_TRUE(subject.isOn());
    EXPECT_TRUE(subject.switchOff());
    EXPECT_FALSE(subject.isOn());
}

TEST_F(LinuxBackendAtLoginTest, SaysSoIfItDoesNotAnswer) {
    write("vorq-gateway", "#!/bin/sh\nexit 1\n");
    const auto outcome = backend(QUrl("http://127.0.0.1:1"), at("vorq-gateway")).switchOn();
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error().toStdString(), HasSubstr("vorq-gateway serve --port 1"));
}

TEST_F(LinuxBackendAtLoginTest, AnEntryThatCannotBeWrittenIsToldOf) {
    write("config", "a file where the folder should be");
    const auto outcome = backend(m_listener.url()).switchOn();
    ASSERT_FALSE(outcome);
    EXPECT_THAT(outcome.error().toStdString(), HasSubstr("Could not write"));
}

} // namespace
} // namespace vorq
