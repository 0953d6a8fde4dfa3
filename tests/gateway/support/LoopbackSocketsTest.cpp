#include "support/LoopbackSockets.h"
#include "doubles/gateway/ListeningPort.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace vorq::gateway::testing {
namespace {

constexpr auto kTable =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout "
    "inode\n"
    "   0: 0100007F:4936 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1001        0 1\n"
    "   1: 0100007F:2253 0100007F:9C40 01 00000000:00000000 00:00000000 00000000  1000        0 2\n"
    "   2: 0200007F:9C40 0100007F:2253 01 00000000:00000000 00:00000000 00000000  1002        0 3\n"
    "   3: 0100007F:9C40 0100007F:2253 01 00000000:00000000 00:00000000 00000000  1003        0 4\n"
    "   4: 0100007F:9C41 0100007F:2253 06 00000000:00000000 00:00000000 00000000     0        0 5\n"
    "   5: broken\n";

TEST(LoopbackSocketsTest, TheUserIsThatOfTheOtherEnd) {
    const SocketEnd own{"127.0.0.1", 0x2253};
    EXPECT_EQ(peerUserIn(kTable, {"127.0.0.1", 0x9C40}, own), 1003U);
    EXPECT_EQ(peerUserIn(kTable, {"::ffff:127.0.0.1", 0x9C40}, own), 1003U);
    EXPECT_EQ(peerUserIn(kTable, {"127.0.0.2", 0x9C40}, own), 1002U)
        << "another address with the same port is another program";
    EXPECT_EQ(peerUserIn(kTable, {"127.0.0.1", 0x9C41}, own), std::nullopt) << "it has closed";
    EXPECT_EQ(peerUserIn(kTable, {"", 0x9C40}, own), std::nullopt);
}

TEST(LoopbackSocketsTest, TheUserIsThatOfTheListener) {
    EXPECT_EQ(listeningUserIn(kTable, 0x4936), 1001U);
    EXPECT_EQ(listeningUserIn(kTable, 0x2253), std::nullopt) << "it is a connection";
}

TEST(LoopbackSocketsTest, TheTableOfThisComputerIsRead) {
    const ListeningPort listener;
    EXPECT_EQ(listeningUser(listener.port()), getuid());
    EXPECT_TRUE(isLoopbackAddress("127.8.9.1"));
    EXPECT_TRUE(isLoopbackAddress("::1"));
    EXPECT_TRUE(isLoopbackAddress("::ffff:127.0.0.1"));
    for (const char* address : {"", "128.0.0.1", "::2", "127.evil", "10.0.0.127"})
        EXPECT_FALSE(isLoopbackAddress(address)) << address;
}

} // namespace
} // namespace vorq::gateway::testing
