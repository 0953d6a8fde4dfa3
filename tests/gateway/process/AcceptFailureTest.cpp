#include "doubles/gateway/ChildProcess.h"
#include "doubles/gateway/RawClient.h"
#include "doubles/gateway/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace vorq::gateway::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class AcceptFailureTest : public ::testing::Test {
  protected:
    AcceptFailureTest()
        : server(VORQ_GATEWAY_PROGRAM, {"serve", "--port", "0"},
                 {{"HOME", folder.path().string()}}) {
        const std::string line = server.readLine();
        port = std::stoi(line.substr(line.rfind(':') + 1));
    }
    std::vector<int> openFiles() const {
        std::vector<int> files;
        const std::string folderOfFiles = "/proc/" + std::to_string(server.pid()) + "/fd";
        for (const auto& entry : std::filesystem::directory_iterator(folderOfFiles))
            files.push_back(std::stoi(entry.path().filename().string()));
        return files;
    }
    std::string askForNothing() const {
        RawClient client(port);
        client.send("POST /nowhere HTTP/1.1\r\nHost: localhost\r\nContent-Length: 0\r\n\r\n");
        return client.receiveAll();
    }

    TemporaryFolder folder;
    ChildProcess server;
    int port = 0;
};

/// The server's own descriptor of the socket that listens, as one of this process; -1 without one.
int listenerOf(pid_t process, const std::vector<int>& files) {
    const auto handle = static_cast<int>(syscall(SYS_pidfd_open, process, 0));
    int listener = -1;
    for (const int file : files) {
        const auto copy = static_cast<int>(syscall(SYS_pidfd_getfd, handle, file, 0));
        int listens = 0;
        socklen_t size = sizeof listens;
        const bool isSocket =
            copy >= 0 && getsockopt(copy, SOL_SOCKET, SO_ACCEPTCONN, &listens, &size) == 0;
        if (isSocket && listens != 0 && listener < 0) {
            listener = copy;
        } else if (copy >= 0) {
            close(copy);
        }
    }
    close(handle);
    return listener;
}

/// The limit below which `count` numbers are free.
rlim_t limitWithRoomFor(int count, const std::vector<int>& files) {
    int number = 0;
    for (int left = count; left > 0; ++number) {
        if (std::ranges::find(files, number) == files.end()) --left;
    }
    return static_cast<rlim_t>(number);
}

TEST_F(AcceptFailureTest, TooManyOpenFilesAreOutwaitedAndSaidOnce) {
    const std::vector<int> files = openFiles();
    rlimit limit{};
    ASSERT_EQ(prlimit(server.pid(), RLIMIT_NOFILE, nullptr, &limit), 0);
    limit.rlim_cur = limitWithRoomFor(3, files);
    ASSERT_EQ(prlimit(server.pid(), RLIMIT_NOFILE, &limit, nullptr), 0);
    std::vector<std::unique_ptr<RawClient>> idle;
    for (int i = 0; i < 12; ++i)
        idle.push_back(std::make_unique<RawClient>(port));
    EXPECT_THAT(askForNothing(), StartsWith("HTTP/1.1 404"));
    idle.clear();
    EXPECT_THAT(askForNothing(), StartsWith("HTTP/1.1 404"));
    server.signal(SIGTERM);
    EXPECT_EQ(server.wait(), 0);
    const std::string errors = server.readErrors();
    EXPECT_THAT(errors, StartsWith("vorq-gateway: connections have to wait: "));
    EXPECT_EQ(std::ranges::count(errors, '\n'), 1) << errors;
}

TEST_F(AcceptFailureTest, AListenerThatIsLostEndsTheServerWithOneAndASentence) {
    const int listener = listenerOf(server.pid(), openFiles());
    ASSERT_GE(listener, 0) << "the kernel does not hand out descriptors of children";
    shutdown(listener, SHUT_RDWR);
    close(listener);
    EXPECT_EQ(server.wait(), 1);
    EXPECT_THAT(server.readErrors(), HasSubstr("lets no connection in"));
}

} // namespace
} // namespace vorq::gateway::testing
