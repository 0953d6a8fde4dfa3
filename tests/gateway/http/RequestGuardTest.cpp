#include "http/RequestGuard.h"
#include "support/ApiError.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

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

bool allowsBehindProxy(const std::string& host, const std::string& origin) {
    HttpRequest request;
    request.host = host;
    if (!origin.empty()) request.origin = origin;
    const RequestGuard guard("0.0.0.0", {}, PublicUrl("https://vorq.example.org"));
    try {
        guard.checkSender(request);
        return true;
    } catch (const ApiError& error) {
        EXPECT_EQ(error.status, 403);
        return false;
    }
}

TEST(RequestGuardTest, BehindAProxyItHasThePublicNameAndItsOrigin) {
    EXPECT_TRUE(allowsBehindProxy("vorq.example.org", ""));
    EXPECT_TRUE(allowsBehindProxy("Vorq.Example.org:443", "https://vorq.example.org"));
    EXPECT_FALSE(allowsBehindProxy("vorq.example.org", "http://vorq.example.org"));
    EXPECT_FALSE(allowsBehindProxy("vorq.example.org", "https://evil.example"));
    EXPECT_FALSE(allowsBehindProxy("vorq.example.org", "null"));
    EXPECT_FALSE(allowsBehindProxy("vorq.example.org:8443", ""));
}

TEST(RequestGuardTest, BehindAProxyOtherNamesAreForeignThoughItListensToAll) {
    EXPECT_FALSE(allowsBehindProxy("evil.example", ""));
    EXPECT_FALSE(allowsBehindProxy("example.org", ""));
    EXPECT_TRUE(allowsBehindProxy("127.0.0.1:8787", "http://127.0.0.1:8787")) << "from here";
}

TEST(RequestGuardTest, OnlyThePublicNameIsReachedByTls) {
    const RequestGuard guard("127.0.0.1", {}, PublicUrl("https://vorq.example.org"));
    HttpRequest request;
    request.host = "vorq.example.org";
    EXPECT_TRUE(guard.isSecure(request));
    request.host = "127.0.0.1:8787";
    EXPECT_FALSE(guard.isSecure(request));
    request.host = "vorq.example.org";
    EXPECT_FALSE(
        RequestGuard("127.0.0.1", {}, PublicUrl("http://vorq.example.org")).isSecure(request));
    EXPECT_FALSE(RequestGuard("127.0.0.1").isSecure(request));
}

std::string senderOf(const std::string& peer, const std::string& forwardedFor,
                     const std::vector<IpRange>& proxies = {IpRange("127.0.0.1"),
                                                            IpRange("10.0.0.2")}) {
    HttpRequest request;
    request.remoteAddress = peer;
    request.forwardedFor = forwardedFor;
    return RequestGuard("127.0.0.1", proxies).senderAddress(request);
}

TEST(RequestGuardTest, ATrustedProxySaysWhereARequestCameFrom) {
    EXPECT_EQ(senderOf("127.0.0.1", "203.0.113.9"), "203.0.113.9");
    EXPECT_EQ(senderOf("127.0.0.1", "203.0.113.9, 10.0.0.2"), "203.0.113.9");
    EXPECT_EQ(senderOf("::ffff:127.0.0.1", "[2001:DB8::1]:4711"), "2001:db8::1");
    EXPECT_EQ(senderOf("127.0.0.1", "203.0.113.9:4711"), "203.0.113.9");
    EXPECT_EQ(senderOf("127.0.0.1", ""), "127.0.0.1");
}

TEST(RequestGuardTest, AProxyStandsForWhatItSaysThatIsNoAddress) {
    for (const char* said : {"unknown", "_hidden", "203.0.113.9, unknown", "203.0.113", ",",
                             "203.0.113.9,", "2001:db8::1::2"})
        EXPECT_EQ(senderOf("127.0.0.1", said), "127.0.0.1") << said;
    EXPECT_EQ(senderOf("127.0.0.1", "made up, 10.0.0.2"), "10.0.0.2");
}

TEST(RequestGuardTest, EachProxyOfATrustedRangeSaysWhereARequestCameFrom) {
    const std::vector<IpRange> ranges = {IpRange("10.1.0.0/16"), IpRange("fd00::/8")};
    EXPECT_EQ(senderOf("10.1.7.9", "203.0.113.9", ranges), "203.0.113.9");
    EXPECT_EQ(senderOf("::ffff:10.1.0.1", "203.0.113.9, fd12::3, 10.1.255.255", ranges),
              "203.0.113.9");
    EXPECT_EQ(senderOf("fd12::3", "2001:db8::9", ranges), "2001:db8::9");
    EXPECT_EQ(senderOf("10.2.0.1", "203.0.113.9", ranges), "10.2.0.1");
    EXPECT_EQ(senderOf("fe80::1", "203.0.113.9", ranges), "fe80::1");
}

TEST(RequestGuardTest, WhatNoTrustedProxySaysIsNotTaken) {
    EXPECT_EQ(senderOf("198.51.100.7", "203.0.113.9"), "198.51.100.7");
    EXPECT_EQ(senderOf("127.0.0.1", "made up, 203.0.113.9"), "203.0.113.9");
    HttpRequest request;
    request.remoteAddress = "127.0.0.1";
    request.forwardedFor = "203.0.113.9";
    EXPECT_EQ(RequestGuard("127.0.0.1").senderAddress(request), "127.0.0.1");
}

} // namespace
} // namespace vorq::gateway::testing
