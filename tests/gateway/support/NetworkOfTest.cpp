#include "support/NetworkOf.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

TEST(NetworkOfTest, AnAddressOfIPv4StandsForItself) {
    EXPECT_EQ(networkOf("203.0.113.9"), "203.0.113.9");
    EXPECT_EQ(networkOf("::ffff:203.0.113.9"), "203.0.113.9");
    EXPECT_EQ(networkOf("::ffff:cb00:7109"), "203.0.113.9");
}

TEST(NetworkOfTest, AnAddressOfIPv6StandsForItsNetwork) {
    for (const char* address :
         {"2001:db8:1:2::1", "2001:DB8:1:2:ffff:ffff:ffff:ffff", "2001:0db8:0001:0002::"})
        EXPECT_EQ(networkOf(address), "2001:db8:1:2::/64") << address;
    EXPECT_EQ(networkOf("2001:db8:1:3::1"), "2001:db8:1:3::/64");
    EXPECT_EQ(networkOf("fe80::1%eth0"), "fe80::/64");
    EXPECT_EQ(networkOf("::1"), "::/64");
}

TEST(NetworkOfTest, WhatIsNoAddressStaysAsItIs) {
    for (const char* text : {"", "x", "unknown", "203.0.113", ":::", "%", "2001:db8::1/64"}) {
        EXPECT_EQ(networkOf(text), text);
        EXPECT_FALSE(isAddress(text)) << text;
    }
}

TEST(NetworkOfTest, TellsAddresses) {
    for (const char* text :
         {"203.0.113.9", "::1", "2001:db8::1", "::ffff:203.0.113.9", "fe80::1%eth0"})
        EXPECT_TRUE(isAddress(text)) << text;
}

} // namespace
} // namespace vorq::gateway::testing
