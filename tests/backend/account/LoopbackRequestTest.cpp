#include "backend/account/LoopbackRequest.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

using namespace LoopbackRequest;

const QByteArray bareCallback = "http://127.0.0.1:18742/callback";

QByteArray addressIn(QByteArrayView request) {
    return callbackURL(request).toEncoded();
}

QByteArray withFields(const QByteArray& fields) {
    return "GET /callback?handoff=abc HTTP/1.1\r\n" + fields + "\r\n";
}

TEST(LoopbackRequest, TheAddressIsTheSecondWordOfTheFirstLine) {
    EXPECT_EQ(addressIn("GET /callback?handoff=abc HTTP/1.1\r\nHost: x\r\n\r\n"),
              bareCallback + "?handoff=abc");
    EXPECT_EQ(addressIn("GET /callback?a=1 HTTP/1.1\nHost: x\n\n"), bareCallback + "?a=1");
    EXPECT_EQ(addressIn("GET  /two?a=1?b HTTP/1.1\r\n\r\n"), "http://127.0.0.1:18742/two?a=1?b");
    EXPECT_EQ(addressIn("GET /favicon.ico HTTP/1.1\r\n\r\n"), "http://127.0.0.1:18742/favicon.ico");
    EXPECT_EQ(addressIn("GET /callback?handoff=a%20b%26c HTTP/1.1\r\n\r\n"),
              bareCallback + "?handoff=a%20b%26c");
}

TEST(LoopbackRequest, WhatNamesNoPathIsTheCallback) {
    for (const char* request :
         {"", "GET", "GET\r\n/callback?handoff=abc", "\r\n\r\n", " ", "GET relative HTTP/1.1\r\n",
          "OPTIONS * HTTP/1.1\r\n", "GET http://elsewhere/callback?handoff=abc HTTP/1.1\r\n"})
        EXPECT_EQ(callbackURL(request).path(), "/callback") << request;
    EXPECT_EQ(addressIn("GET\r\n/callback?handoff=abc"), bareCallback);
}

TEST(LoopbackRequest, WhatIsNoTextIsTheCallback) {
    EXPECT_EQ(addressIn("GET /callback?handoff=\xff\xfe HTTP/1.1\r\n\r\n"), bareCallback);
    EXPECT_EQ(addressIn(QByteArrayView("\x16\x03\x01\x02\x00\x01\x00\xfc\x80", 9)), bareCallback);
}

TEST(LoopbackRequest, AHeadEndsWithAnEmptyLine) {
    EXPECT_TRUE(isWhole(withFields("Host: 127.0.0.1:18742\r\n")));
    EXPECT_TRUE(isWhole("GET /callback\n\n"));
    EXPECT_FALSE(isWhole("GET /callback?handoff=abc HTTP/1.1\r\nHost: 127.0.0.1:18742\r\n"));
    EXPECT_FALSE(isWhole(""));
}

TEST(LoopbackRequest, ABrowserThatWasSentHereIsWelcome) {
    for (const char* fields :
         {"", "Host: 127.0.0.1:18742\r\n", "Host: localhost:18742\r\n", "host:LOCALHOST\r\n",
          "Host: 127.0.0.1:18742\r\nSec-Fetch-Site: cross-site\r\nSec-Fetch-Mode: navigate\r\n"
          "Sec-Fetch-Dest: document\r\n",
          "Host: 127.0.0.1:18742\r\nOrigin: null\r\nSec-Fetch-Mode: navigate\r\n"})
        EXPECT_FALSE(isForeign(withFields(fields))) << fields;
}

TEST(LoopbackRequest, ANameThatOnlyLeadsHereIsForeign) {
    for (const char* host :
         {"evil.example:18742", "127.0.0.1.evil.example", "x", "", "[::1]:18742"})
        EXPECT_TRUE(isForeign(withFields(QByteArray("Host: ") + host + "\r\n"))) << host;
    EXPECT_TRUE(isForeign(withFields("Host: 127.0.0.1\r\nHost: evil.example\r\n")));
}

TEST(LoopbackRequest, WhatAPageSendsByItselfIsForeign) {
    for (const char* fields :
         {"Sec-Fetch-Mode: no-cors\r\nSec-Fetch-Dest: empty\r\n", "Sec-Fetch-Mode: cors\r\n",
          "sec-fetch-mode: navigate\r\nsec-fetch-dest: iframe\r\n",
          "Sec-Fetch-Mode: no-cors\r\nSec-Fetch-Dest: image\r\n",
          "Origin: https://evil.example\r\n", "Origin: null\r\n"})
        EXPECT_TRUE(isForeign(withFields(QByteArray("Host: 127.0.0.1:18742\r\n") + fields)))
            << fields;
}

TEST(LoopbackRequest, AFormOrAScriptThatChoosesItsMethodIsForeign) {
    for (const char* method : {"POST", "OPTIONS", "HEAD", "PUT", "get"})
        EXPECT_TRUE(isForeign(QByteArray(method) +
                              " /callback?handoff=abc HTTP/1.1\r\nHost: 127.0.0.1:18742\r\n\r\n"))
            << method;
}

TEST(LoopbackRequest, FieldsInTheBodyAreNone) {
    EXPECT_FALSE(isForeign(withFields("Host: 127.0.0.1\r\n\r\nOrigin: https://evil.example\r\n")));
}

} // namespace
} // namespace vorq
