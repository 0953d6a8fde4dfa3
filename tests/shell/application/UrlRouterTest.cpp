// Where the URLs go that the system delivers.

#include "doubles/shell/ShellFixture.h"

#include <QSignalSpy>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UrlRouterTest : public ShellFixture {
  protected:
    UrlRouterTest() { launch(); }

    void open(const QString& url) {
        m_delegate.applicationOpen({QUrl(url)});
        m_clock.settle();
    }
};

TEST_F(UrlRouterTest, AHandoffSignsInByItself) {
    open("vorq://auth/callback?handoff=abc");
    EXPECT_EQ(exchange().path(), "/auth/mac-handoff/exchange");
    EXPECT_EQ(exchange().json()["code"], "abc");
}

TEST_F(UrlRouterTest, AHandoffEndsTheSignInThatWaits) {
    m_signIn.pending = true;
    const std::size_t before = m_transport.count();
    open("vorq://auth/callback?handoff=abc");
    EXPECT_THAT(m_signIn.finished, ElementsAre(QUrl("vorq://auth/callback?handoff=abc")));
    EXPECT_EQ(m_transport.count(), before);
}

TEST_F(UrlRouterTest, AnEmptyHandoffIsNone) {
    QSignalSpy codes(&m_delegate.notifications(), &ShellNotifications::vorqMacHandoffCode);
    m_signIn.pending = true;
    open("vorq://auth/callback?handoff=");
    EXPECT_THAT(m_signIn.finished, ElementsAre(QUrl("vorq://auth/callback?handoff=")));
    open("vorq://auth/callback?handoff=");
    EXPECT_EQ(codes.count(), 0);
}

TEST_F(UrlRouterTest, ACallbackCountsOnlyWhileASignInWaits) {
    open("http://127.0.0.1:18742/callback?refresh_token=x");
    EXPECT_THAT(m_signIn.finished, IsEmpty());
    m_signIn.pending = true;
    open("vorq://elsewhere/callback");
    EXPECT_THAT(m_signIn.finished, IsEmpty());
    open("http://127.0.0.1:18742/callback?refresh_token=x");
    EXPECT_EQ(m_signIn.finished.size(), 1);
}

TEST_F(UrlRouterTest, WhatWasDealtWithIsTold) {
    UrlRouter router(m_signIn, m_delegate.notifications());
    EXPECT_TRUE(router.handleOpenURL(QUrl("vorq://auth/callback?handoff=abc")));
    EXPECT_FALSE(router.handleOpenURL(QUrl("vorq://auth/callback?error=no")));
    m_signIn.pending = true;
    EXPECT_FALSE(router.handleOpenURL(QUrl("vorq://auth/elsewhere?error=no")));
    EXPECT_TRUE(router.handleOpenURL(QUrl("vorq://auth/callback?error=no")));
    m_clock.settle();
}

TEST_F(UrlRouterTest, EachUrlIsTakenInTurn) {
    QSignalSpy codes(&m_delegate.notifications(), &ShellNotifications::vorqMacHandoffCode);
    m_delegate.applicationOpen(
        {QUrl("vorq://a?handoff=one"), QUrl("vorq://nothing"), QUrl("vorq://a?handoff=two")});
    ASSERT_EQ(codes.count(), 2);
    EXPECT_EQ(codes[0][0], "one");
    EXPECT_EQ(codes[1][0], "two");
    m_clock.settle();
}

} // namespace
} // namespace vorq
