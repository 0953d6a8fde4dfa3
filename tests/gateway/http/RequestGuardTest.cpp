#include "http/RequestGuard.h"
#include "http/ApiError.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

bool allows(const std::string& listenHost, const std::string& host) {
    HttpRequest request;
    request.host = host;
    try {
        RequestGuard(listenHost).checkSender(request);
        return true;
    } catch (const ApiError& error) {
        EXPECT_EQ(error.status, 403);
        return false;
    }
}

TEST(RequestGuardTest, LoopbackNamesAreAlwaysItsOwn) {
    for (const char* host : {"127.0.0.1", "127.0.0.1:8787", "LOCALHOST:1", "[::1]:8787", "[::1]"}) {
        EXPECT_TRUE(allows("127.0.0.1", host)) << host;
        EXPECT_TRUE(allows("192.168.1.5", host)) << host;
    }
}

TEST(RequestGuardTest, OtherNamesAreForeign) {
    for (const char* host : {"", "example.org", "localhost.example.org", "127.0.0.2", "[::2]"}) {
        EXPECT_FALSE(allows("127.0.0.1", host)) << host;
    }
}

TEST(RequestGuardTest, TheListeningAddressIsItsOwn) {
    EXPECT_TRUE(allows("192.168.1.5", "192.168.1.5:8787"));
    EXPECT_FALSE(allows("192.168.1.5", "192.168.1.6:8787"));
    EXPECT_TRUE(allows("fe80::1", "[FE80::1]:8787"));
}

TEST(RequestGuardTest, AServerForEveryAddressTakesEveryName) {
    EXPECT_TRUE(allows("0.0.0.0", "my-computer:8787"));
    EXPECT_TRUE(allows("::", "my-computer"));
    EXPECT_FALSE(allows("0.0.0.0", ""));
}

} // namespace
} // namespace vorq::gateway::testing
