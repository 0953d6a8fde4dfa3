#include "auth/PasswordReset.h"
#include "auth/WebAccounts.h"
#include "doubles/gateway/ManualClock.h"
#include "doubles/gateway/TestState.h"
#include "support/ApiError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <future>
#include <vector>

namespace vorq::gateway::testing {
namespace {

constexpr auto kTeamPassword = "open sesame";

int answerOf(const std::function<void()>& call) {
    try {
        call();
        return 200;
    } catch (const ApiError& error) {
        return error.status;
    }
}

/// One of several gateways of a team.
struct Member {
    explicit Member(const TestState& state)
        : accounts(state.open(), clock, {.wrongPasswordsPerMinute = 3}) {}

    Session signIn() { return accounts.exchangeHandoff(accounts.createHandoff("ada")); }
    bool knows(const Session& session) { return accounts.identify(session.token).has_value(); }
    Session refreshed(const Session& session) { return accounts.refresh(session.refreshToken); }
    int refresh(const Session& session) {
        return answerOf([&] { static_cast<void>(refreshed(session)); });
    }
    int signInWeb(const std::string& email, const std::string& password) {
        return answerOf(
            [&] { static_cast<void>(web.signIn({email, password}, {.address = "203.0.113.9"})); });
    }

    ManualClock clock;
    AccountService accounts;
    WebAccounts web{accounts, clock};
    PasswordReset resets{accounts, clock};
};

class TeamTest : public ::testing::Test {
  protected:
    /// What both give who are asked at the same time, the lower status first.
    static std::pair<int, int> atOnce(const std::function<int()>& one,
                                      const std::function<int()>& two) {
        auto other = std::async(std::launch::async, two);
        const int first = one();
        const int second = other.get();
        return std::minmax(first, second);
    }
    void advanceSeconds(int seconds) {
        here.clock.advanceSeconds(seconds);
        there.clock.advanceSeconds(seconds);
    }

    TestState state{StateKind::Server};
    Member here{state};
    Member there{state};
};

TEST_F(TeamTest, ASignInOnOneGatewayIsGoodOnTheOther) {
    const Session session = here.signIn();
    EXPECT_TRUE(there.knows(session));
    const Session renewed = there.refreshed(session);
    EXPECT_TRUE(here.knows(renewed));
    EXPECT_TRUE(here.refreshed(renewed).signedIn);
}

TEST_F(TeamTest, ACodeOfOneGatewayIsTakenOnTheOther) {
    const std::string code = here.accounts.createHandoff("ada");
    EXPECT_TRUE(there.accounts.exchangeHandoff(code).signedIn);
    EXPECT_EQ(answerOf([&] { static_cast<void>(here.accounts.exchangeHandoff(code)); }), 400);
}

TEST_F(TeamTest, WhatIsEndedOnOneGatewayEndsOnAll) {
    const Session session = here.signIn();
    ASSERT_TRUE(there.knows(session));
    static_cast<void>(here.accounts.signOut(here.accounts.identify(session.token).value()));
    EXPECT_FALSE(there.knows(session));
    EXPECT_EQ(there.refresh(session), 401);
}

TEST_F(TeamTest, ATokenThatWasUsedOnOneGatewayShowsTheTheftOnTheOther) {
    const Session first = here.signIn();
    const Session second = here.refreshed(first);
    ASSERT_TRUE(here.knows(second));
    advanceSeconds(60);
    EXPECT_EQ(there.refresh(first), 401);
    EXPECT_FALSE(here.knows(second)) << "the sign-in has ended everywhere";
    EXPECT_EQ(here.refresh(second), 401);
}

TEST_F(TeamTest, ARefreshThatOverlapsWithOneElsewhereIsToBeTriedAgain) {
    const Session first = here.signIn();
    const Session second = here.refreshed(first);
    advanceSeconds(3);
    EXPECT_EQ(there.refresh(first), 409);
    EXPECT_TRUE(there.knows(second));
    advanceSeconds(7);
    EXPECT_EQ(there.refresh(first), 401) << "the answer has arrived, as its use shows";
}

TEST_F(TeamTest, AnAnswerThatWasLostIsGivenAnewElsewhere) {
    const Session first = here.signIn();
    const Session lost = here.refreshed(first);
    advanceSeconds(10);
    const Session again = there.refreshed(first);
    EXPECT_TRUE(here.knows(again));
    EXPECT_FALSE(here.knows(lost));
}

TEST_F(TeamTest, OfTwoThatTradeATokenAtTheSameTimeOneGetsAPair) {
    for (int round = 0; round < 25; ++round) {
        const Session session = here.signIn();
        EXPECT_EQ(
            atOnce([&] { return here.refresh(session); }, [&] { return there.refresh(session); }),
            std::pair(200, 409));
    }
}

TEST_F(TeamTest, OfTwoThatTakeACodeAtTheSameTimeOneIsSignedIn) {
    for (int round = 0; round < 25; ++round) {
        const std::string code = here.accounts.createHandoff("ada");
        const auto take = [&](Member& at) {
            return answerOf([&] { static_cast<void>(at.accounts.exchangeHandoff(code)); });
        };
        EXPECT_EQ(atOnce([&] { return take(here); }, [&] { return take(there); }),
                  std::pair(200, 400));
    }
}

TEST_F(TeamTest, OfTwoThatSignUpWithOneAddressAtTheSameTimeOneIsIn) {
    for (int round = 0; round < 3; ++round) {
        const std::string email = std::to_string(round) + "@example.org";
        const auto signUp = [&](Member& at) {
            return answerOf([&] { static_cast<void>(at.web.signUp({email, kTeamPassword}, {})); });
        };
        EXPECT_EQ(atOnce([&] { return signUp(here); }, [&] { return signUp(there); }),
                  std::pair(200, 409));
        advanceSeconds(60);
    }
}

TEST_F(TeamTest, TwoThatAskForTheLocalAccountAtTheSameTimeGetTheSameOne) {
    auto other = std::async(std::launch::async, [&] { return there.signIn().account.id; });
    EXPECT_EQ(here.signIn().account.id, other.get());
}

TEST_F(TeamTest, OfTwoThatUseAResetLinkAtTheSameTimeOneSetsThePassword) {
    const std::string code = here.resets.createFor("", "ada").secret;
    const auto replace = [&](Member& at) {
        return answerOf([&] { at.resets.replace(code, "a new password"); });
    };
    EXPECT_EQ(atOnce([&] { return replace(here); }, [&] { return replace(there); }),
              std::pair(200, 400));
}

TEST_F(TeamTest, NoSignInOutlivesAPasswordThatIsReplacedAtTheSameTime) {
    for (int round = 0; round < 5; ++round) {
        const std::string code = here.accounts.createHandoff("ada");
        const std::string link = here.resets.createFor("", "ada").secret;
        std::optional<Session> session;
        auto replacing =
            std::async(std::launch::async, [&] { there.resets.replace(link, "a new password"); });
        static_cast<void>(answerOf([&] { session = here.accounts.exchangeHandoff(code); }));
        replacing.get();
        if (session) EXPECT_FALSE(here.knows(*session));
        EXPECT_EQ(answerOf([&] { static_cast<void>(here.accounts.exchangeHandoff(code)); }), 400);
    }
}

TEST_F(TeamTest, WrongPasswordsAreCountedTogether) {
    static_cast<void>(here.web.signUp({"ada@example.org", kTeamPassword}, {}));
    EXPECT_EQ(here.signInWeb("ada@example.org", "wrong"), 403);
    EXPECT_EQ(there.signInWeb("ada@example.org", "wrong"), 403);
    EXPECT_EQ(here.signInWeb("ada@example.org", "wrong"), 403);
    EXPECT_EQ(there.signInWeb("ada@example.org", kTeamPassword), 429);
    EXPECT_EQ(here.signInWeb("ada@example.org", kTeamPassword), 429);
    advanceSeconds(20);
    EXPECT_EQ(there.signInWeb("ada@example.org", kTeamPassword), 200);
    EXPECT_EQ(here.signInWeb("ada@example.org", kTeamPassword), 200)
        << "right ones are not counted";
}

TEST_F(TeamTest, SignUpsAndLinksAreCountedTogether) {
    for (int i = 0; i < 5; ++i) {
        Member& at = i % 2 == 0 ? here : there;
        EXPECT_EQ(answerOf([&] {
                      static_cast<void>(
                          at.web.signUp({std::to_string(i) + "@example.org", kTeamPassword}, {}));
                  }),
                  200);
    }
    EXPECT_EQ(answerOf([&] { static_cast<void>(here.web.signUp({"6@b.c", kTeamPassword}, {})); }),
              429);
    for (int i = 0; i < 3; ++i) {
        Member& at = i % 2 == 0 ? here : there;
        EXPECT_EQ(answerOf([&] { static_cast<void>(at.resets.request("1@b.c", "x")); }), 200);
    }
    EXPECT_EQ(answerOf([&] { static_cast<void>(there.resets.request("1@b.c", "x")); }), 429);
}

TEST_F(TeamTest, SignUpsAndLinksOfOneNetworkOfIPv6AreCountedTogether) {
    const auto signUp = [&](int i, const std::string& from) {
        return answerOf([&] {
            static_cast<void>(here.web.signUp({std::to_string(i) + "@example.org", kTeamPassword},
                                              {.address = from}));
        });
    };
    const auto askForLink = [&](const std::string& from) {
        return answerOf([&] { static_cast<void>(here.resets.request("1@b.c", from)); });
    };
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(signUp(i, "2001:db8:0:1::" + std::to_string(i)), 200);
    EXPECT_EQ(signUp(6, "2001:db8:0:1::6"), 429);
    EXPECT_EQ(signUp(7, "2001:db8:0:2::6"), 200);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(askForLink("2001:db8:0:1::" + std::to_string(i)), 200);
    EXPECT_EQ(askForLink("2001:db8:0:1::6"), 429);
    EXPECT_EQ(askForLink("2001:db8:0:2::6"), 200);
}

TEST_F(TeamTest, ABrowserIsSignedInWhicheverGatewayItReaches) {
    const std::string secret = here.web.continueHere("ada", {.agent = "a browser"});
    const auto identity = there.web.identify(secret);
    ASSERT_TRUE(identity.has_value());
    EXPECT_EQ(there.web.signIns(*identity).size(), 1U);
    there.web.endSignIn(*identity, identity->owner.familyId);
    EXPECT_FALSE(here.web.identify(secret).has_value());
    EXPECT_EQ(answerOf([&] { static_cast<void>(here.web.createHandoff(*identity)); }), 403)
        << "nor does a request that was under way get a code";
}

TEST_F(TeamTest, ClocksThatDifferALittleDoNoHarm) {
    there.clock.setTimeOfDay(-4);
    const Session first = here.signIn();
    EXPECT_TRUE(there.knows(first));
    const Session second = here.refreshed(first);
    EXPECT_EQ(there.refresh(first), 409);
    EXPECT_TRUE(there.knows(second));
    const Session third = there.refreshed(second);
    EXPECT_EQ(here.refresh(second), 409);
    EXPECT_TRUE(here.knows(third));
}

TEST_F(TeamTest, AClockThatIsSetBackGivesNoTokenASecondLife) {
    const Session first = here.signIn();
    const Session second = here.refreshed(first);
    const Session third = here.refreshed(second);
    advanceSeconds(60);
    there.clock.setTimeOfDay(-3600);
    EXPECT_EQ(there.refresh(first), 401);
    EXPECT_FALSE(here.knows(third));
}

} // namespace
} // namespace vorq::gateway::testing
