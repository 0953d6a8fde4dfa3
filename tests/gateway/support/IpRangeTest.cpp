#include "support/IpRange.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace vorq::gateway::testing {
namespace {

std::string refusalOf(const std::string& text) {
    try {
        (void)IpRange(text);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

TEST(IpRangeTest, ASingleAddressIsItselfHoweverItIsWritten) {
    for (const char* text : {"10.0.0.5", " 10.0.0.5 ", "10.0.0.5:443", "::ffff:10.0.0.5",
                             "[::FFFF:10.0.0.5]:443", "10.0.0.5/32", "::ffff:a00:5"}) {
        const IpRange one(text);
        EXPECT_TRUE(one.contains("10.0.0.5")) << text;
        EXPECT_TRUE(one.contains("::ffff:10.0.0.5")) << text;
        EXPECT_FALSE(one.contains("10.0.0.6")) << text;
        EXPECT_FALSE(one.contains("10.0.0.50")) << text;
        EXPECT_FALSE(one.contains("::10.0.0.5")) << text;
    }
    for (const char* text :
         {"2001:db8::1", "2001:DB8:0:0::1", "[2001:db8::1]", "2001:db8::1/128"}) {
        const IpRange one(text);
        EXPECT_TRUE(one.contains("2001:db8::1")) << text;
        EXPECT_TRUE(one.contains("[2001:0DB8::0001]:443")) << text;
        EXPECT_FALSE(one.contains("2001:db8::2")) << text;
    }
}

TEST(IpRangeTest, ARangeHoldsWhatBeginsAlike) {
    const IpRange ten("10.0.0.0/8");
    for (const char* address : {"10.0.0.0", "10.0.0.5", "10.255.255.255", "::ffff:10.1.2.3"})
        EXPECT_TRUE(ten.contains(address)) << address;
    for (const char* address : {"9.255.255.255", "11.0.0.0", "110.0.0.1", "a00::", "::a00:1"})
        EXPECT_FALSE(ten.contains(address)) << address;
    const IpRange odd("192.0.2.64/27");
    EXPECT_FALSE(odd.contains("192.0.2.63"));
    EXPECT_TRUE(odd.contains("192.0.2.64"));
    EXPECT_TRUE(odd.contains("192.0.2.95"));
    EXPECT_FALSE(odd.contains("192.0.2.96"));
    const IpRange local("fd00::/8");
    EXPECT_TRUE(local.contains("fd12:3456::1"));
    EXPECT_FALSE(local.contains("fe00::1"));
    const IpRange mapped("::ffff:10.0.0.0/104");
    EXPECT_TRUE(mapped.contains("10.9.9.9"));
    EXPECT_FALSE(mapped.contains("11.0.0.0"));
}

TEST(IpRangeTest, ARangeOfAllIsOfItsFamily) {
    EXPECT_TRUE(IpRange("0.0.0.0/0").contains("203.0.113.9"));
    EXPECT_FALSE(IpRange("0.0.0.0/0").contains("2001:db8::1"));
    EXPECT_TRUE(IpRange("::/0").contains("2001:db8::1"));
}

TEST(IpRangeTest, WhatIsNoAddressIsInNone) {
    for (const char* text : {"", "made up", "10.0.0", "unknown", "10.0.0.5.6", "_hidden", "::g"})
        EXPECT_FALSE(IpRange("0.0.0.0/0").contains(text)) << text;
}

TEST(IpRangeTest, TheZoneOfALocalAddressIsNoMatter) {
    EXPECT_TRUE(IpRange("fe80::/10").contains("fe80::1%eth0"));
    EXPECT_TRUE(IpRange("fe80::1").contains("fe80::1%2"));
}

TEST(IpRangeTest, WhatIsNeitherIsRefused) {
    for (const char* text :
         {"", "proxy.example.org", "10.0.0", "10.0.0.256", "10.0.0.0/33", "10.0.0.0/-1",
          "10.0.0.0/", "10.0.0.0/8/8", "10.0.0.0/eight", "10.0.0.0/ 8", "fd00::/129",
          "fd00::1::", "/8", "*", "10.0.0.0-10.0.0.9", "[fd00::]/8", "fe80::1%eth0/64"})
        EXPECT_EQ(refusalOf(text), "is neither an address nor a range of addresses such as "
                                   "10.0.0.0/8 or fd00::/8.")
            << text;
}

TEST(IpRangeTest, WhatBeginsInTheMidstOfARangeIsRefused) {
    for (const char* text : {"10.0.0.5/8", "fd00::1/8", "192.0.2.65/27", "0.0.0.1/0"})
        EXPECT_EQ(refusalOf(text), "begins in the midst of its range. Write the first address, "
                                   "such as 10.0.0.0/8, or a single one without a slash.")
            << text;
}

} // namespace
} // namespace vorq::gateway::testing
