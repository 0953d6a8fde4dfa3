#include "platform/linux/atspi/BusAnswer.h"
#include "doubles/platform/PrivateBus.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace vorq {
namespace {

// Lets others connect, and says nothing to them.
class SilentSocket {
  public:
    explicit SilentSocket(const QString& path)
        : m_file(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray name = QFile::encodeName(path);
        std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
        EXPECT_EQ(::bind(m_file, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(::listen(m_file, 8), 0);
    }
    SilentSocket(const SilentSocket&) = delete;
    SilentSocket& operator=(const SilentSocket&) = delete;
    ~SilentSocket() { ::close(m_file); }

  private:
    int m_file;
};

TEST(BusAnswer, IsGivenByABus) {
    const PrivateBus bus;
    EXPECT_TRUE(answersConnections(bus.address()));
}

TEST(BusAnswer, IsNotGivenByABusThatHangs) {
    const QTemporaryDir folder;
    const SilentSocket silent(folder.filePath("a bus"));
    EXPECT_FALSE(answersConnections("unix:path=" + folder.filePath("a%20bus") + ",guid=00"));
}

TEST(BusAnswer, IsARefusalWhereThereIsNoBus) {
    const QTemporaryDir folder;
    EXPECT_TRUE(answersConnections("unix:path=" + folder.filePath("none")));
    EXPECT_TRUE(answersConnections("unix:path=/" + QString(500, u'x')));
    EXPECT_TRUE(answersConnections("unix:abstract=no-such-bus"));
    EXPECT_TRUE(answersConnections("tcp:host=localhost,port=1"));
    EXPECT_TRUE(answersConnections(""));
}

} // namespace
} // namespace vorq
