// Turns whose token is refused, and the session around them.

#include "doubles/panel/ConversationFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class SessionTest : public ConversationFixture {
  protected:
    SessionTest() {
        m_defaults.setString("vorq.session.refreshToken", "refresh");
        restart();
        // The launch itself tries a refresh, which these tests let fail.
        refuse(m_transport.at(0), 500);
    }

    // The number of requests so far, not counting the one of the launch.
    [[nodiscard]] std::size_t requests() const { return m_transport.count() - 1; }
    [[nodiscard]] const ScriptedExchange& request(std::size_t index) {
        return m_transport.at(index + 1);
    }

    void grant(const ScriptedExchange& exchange, const QString& token) {
        refuse(exchange, 200,
               json({{"signedIn", true},
                     {"email", "a@b.c"},
                     {"token", token},
                     {"refreshToken", "refresh2"}}));
    }
};

TEST_F(SessionTest, ARefusedTokenIsRefreshedAndTheTurnRepeatedSilently) {
    submit("one");
    refuse(request(0), 401);
    EXPECT_EQ(request(1).path(), "/auth/refresh");
    EXPECT_THAT(texts(), ElementsAre("one", "Working..."));
    grant(request(1), "token2");
    ASSERT_EQ(requests(), 3u);
    EXPECT_EQ(request(2).path(), "/ai/prompt");
    EXPECT_EQ(request(2).header("Authorization"), "Bearer token2");
    reply(request(2), "Done.");
    EXPECT_THAT(texts(), ElementsAre("one", "Done."));
    EXPECT_EQ(state().account().sessionToken(), "token2");
}

TEST_F(SessionTest, ARefreshThatFailsEndsTheSessionWithoutAReply) {
    submit("one");
    refuse(request(0), 401);
    refuse(request(1), 401);
    EXPECT_THAT(texts(), ElementsAre("one"));
    EXPECT_FALSE(state().account().signedIn());
    EXPECT_EQ(state().signIn().authError(), "Your session expired. Sign in again.");
    EXPECT_EQ(status(), VorqWorkStatus::Working);
    EXPECT_FALSE(panel().isPanelTurnInFlight());
    EXPECT_EQ(m_defaults.string("vorq.session.token"), std::nullopt);
}

TEST_F(SessionTest, ARefreshedTokenThatIsRefusedTooEndsTheSession) {
    submit("one");
    refuse(request(0), 401);
    grant(request(1), "token2");
    refuse(request(2), 401);
    EXPECT_EQ(requests(), 3u) << "the call is repeated once only";
    EXPECT_THAT(texts(), ElementsAre("one"));
    EXPECT_FALSE(state().account().signedIn());
}

TEST_F(SessionTest, AnotherErrorAfterTheRefreshIsTheReply) {
    submit("one");
    refuse(request(0), 401);
    grant(request(1), "token2");
    refuse(request(2), 503, "{\"error\":\"Busy.\"}");
    EXPECT_THAT(texts(), ElementsAre("one", "Busy."));
    EXPECT_TRUE(state().account().signedIn());
}

TEST_F(SessionTest, TheQueueGoesOnAfterTheSessionEnded) {
    submit("one");
    submit("two");
    refuse(request(0), 401);
    refuse(request(1), 401);
    advance(1s);
    EXPECT_THAT(texts(), ElementsAre("one", "two")) << "the second finds no token and ends too";
    EXPECT_EQ(panel().queuedTurns(), 0u);
}

TEST_F(SessionTest, SignedOutNothingIsSent) {
    state().account().signOut();
    m_clock.settle();
    const std::size_t before = requests();
    submit("one");
    EXPECT_EQ(requests(), before);
    EXPECT_THAT(texts(), ElementsAre("one"));
    EXPECT_EQ(state().signIn().authError(), "Your session expired. Sign in again.");
}

TEST_F(SessionTest, StopDuringTheRefreshLeavesNothing) {
    submit("one");
    refuse(request(0), 401);
    panel().stopPanelResponse();
    m_clock.settle();
    grant(request(1), "token2");
    EXPECT_THAT(texts(), ElementsAre("one"));
    EXPECT_EQ(requests(), 2u) << "the turn is not repeated";
    EXPECT_EQ(state().account().sessionToken(), "token2") << "new tokens are never lost";
}

TEST_F(SessionTest, ClearDuringTheRefreshLeavesTheGreeting) {
    submit("one");
    refuse(request(0), 401);
    panel().clearPanelChat();
    grant(request(1), "token2");
    advance(2s);
    EXPECT_THAT(texts(), ElementsAre(u"Hello 👋, Vorq here…"_s));
    EXPECT_EQ(requests(), 2u);
}

TEST_F(SessionTest, AnAnalysisBegunDuringTheRefreshGoesOnWithTheNewToken) {
    submit("one");
    refuse(request(0), 401);
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    // Sent with the old token while the refresh is under way.
    EXPECT_EQ(request(2).path(), "/ai/analyze");
    grant(request(1), "token2");
    refuse(request(2), 401);
    EXPECT_TRUE(state().account().signedIn());
    const ScriptedExchange& repeated = m_transport.last();
    if (repeated.path() == "/auth/refresh") grant(repeated, "token3");
    EXPECT_EQ(m_transport.last().path(), "/ai/analyze");
    reply(m_transport.last(), "Analysed.");
    EXPECT_EQ(last().text, "Analysed.");
}

TEST_F(SessionTest, SignOutKeepsTheConversation) {
    submit("one");
    reply(request(0), "Done.");
    state().account().signOut();
    m_clock.settle();
    EXPECT_THAT(texts(), ElementsAre("one", "Done."));
    EXPECT_FALSE(state().canUsePanelAI());
}

TEST_F(SessionTest, ADeepenedSelectionEndsWithTheSession) {
    panel().deepenSelection("the excerpt", "why?");
    m_clock.settle();
    refuse(request(0), 401);
    refuse(request(1), 401);
    EXPECT_THAT(texts(), ElementsAre("why?"));
    EXPECT_FALSE(state().account().signedIn());
}

TEST_F(SessionTest, AnAnalysisEndsWithTheSessionAndLetsTheQueueGoOn) {
    panel().typeHighlightAndAnalyze("captured");
    m_clock.settle();
    submit("one");
    refuse(request(0), 401);
    refuse(request(1), 401);
    EXPECT_THAT(texts(), ElementsAre("Attached: Text capture", "one"));
    EXPECT_EQ(panel().queuedTurns(), 0u);
}

TEST_F(SessionTest, TheStateGoneDuringTheRefreshLeavesNothing) {
    submit("one");
    refuse(request(0), 401);
    m_tester.reset();
    m_state.reset();
    m_clock.settle();
    EXPECT_TRUE(request(1).isAbandoned());
    EXPECT_EQ(m_clock.pendingTimers(), 0u);
}

} // namespace
} // namespace vorq
