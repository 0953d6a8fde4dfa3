#include "support/UrlText.h"
#include "support/ApiError.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

TEST(UrlTextTest, FieldsAreReadAsBrowsersWriteThem) {
    const Fields fields = parseFields("a=1+2&b=%C3%A4%26&c&&d=%0A=");
    EXPECT_EQ(fields, (Fields{{"a", "1 2"}, {"b", "ä&"}, {"c", ""}, {"d", "\n="}}));
    EXPECT_EQ(fieldIn(fields, "nowhere"), "");
    EXPECT_TRUE(parseFields("").empty());
}

TEST(UrlTextTest, WhatNoBrowserWritesIsRefused) {
    for (const char* text : {"a=%", "a=%1", "a=%-1", "a=% 1", "a=1&a=2", "a=%ED%A0%80", "%00=1"})
        EXPECT_THROW(static_cast<void>(parseFields(text)), ApiError) << text;
    EXPECT_NO_THROW(static_cast<void>(parseFields("a=%EF%BF%BD")));
}

TEST(UrlTextTest, EverythingThatMeansSomethingIsEscaped) {
    EXPECT_EQ(urlEscaped("a-._~B9"), "a-._~B9");
    EXPECT_EQ(urlEscaped("/?&=#+ ä\""), "%2F%3F%26%3D%23%2B%20%C3%A4%22");
}

} // namespace
} // namespace vorq::gateway::testing
