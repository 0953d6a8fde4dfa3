#include "auth/AccountService.h"
#include "doubles/gateway/ManualClock.h"
#include "doubles/gateway/TestState.h"
#include "support/ApiError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <mutex>
#include <random>
#include <thread>
#include <vector>

namespace vorq::gateway::testing {
namespace {

constexpr std::int64_t kAccessLife = 3600;
constexpr std::int64_t kRefreshLife = std::int64_t{60} * 24 * 3600;

/// The pair that a sign-in got at one time, and what has become of it.
struct Pair {
    Session session;
    std::int64_t issuedAt = 0;
    bool isSuperseded = false;
};

/// What is known of a sign-in without asking a gateway.
struct ModelSignIn {
    std::vector<Pair> pairs; ///< of the generations 1, 2, 3, …
    std::size_t confirmed = 0;
    std::size_t traded = 0;
    std::int64_t tradedAt = 0;
    bool hasEnded = false;

    /// The status of a refresh with the token of that generation, and what follows from it.
    int refresh(std::size_t generation, std::int64_t now) {
        const Pair& pair = pairs.at(generation - 1);
        if (hasEnded || now >= pair.issuedAt + kRefreshLife) return 401;
        if (generation < pairs.size()) {
            if (traded == generation && now < tradedAt + 10) return 409;
            hasEnded = confirmed > generation || pair.isSuperseded;
            if (hasEnded) return 401;
            for (std::size_t i = generation; i < pairs.size(); ++i)
                pairs[i].isSuperseded = true;
        }
        confirmed = std::max(confirmed, generation);
        traded = generation;
        tradedAt = now;
        return 200;
    }
    [[nodiscard]] bool isValid(std::size_t generation, std::int64_t now) const {
        const Pair& pair = pairs.at(generation - 1);
        return !hasEnded && !pair.isSuperseded && now < pair.issuedAt + kAccessLife;
    }
};

template<typename Call>
int refusalOf(Call call) {
    try {
        call();
        return 200;
    } catch (const ApiError& error) {
        return error.status;
    }
}

/// Operations in random order, at gateways in random order, each compared with what the rules say.
class RandomOperationsTest : public ::testing::TestWithParam<StateKind> {
  protected:
    RandomOperationsTest() {
        const std::size_t count = GetParam() == StateKind::Server ? 2 : 1;
        for (std::size_t i = 0; i < count; ++i)
            gateways.push_back(std::make_unique<AccountService>(state.open(), clock));
    }

    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    }
    AccountService& anyGateway() { return *gateways[below(gateways.size())]; }
    ModelSignIn& anySignIn() {
        // The young ones more often: the others have mostly ended.
        const std::size_t recent = std::min<std::size_t>(signIns.size(), 5);
        return signIns[signIns.size() - 1 - below(recent)];
    }

    void signIn() {
        const std::string code = anyGateway().createHandoff("ada");
        ModelSignIn fresh;
        fresh.pairs.push_back({anyGateway().exchangeHandoff(code), now});
        EXPECT_EQ(refusalOf([&] { static_cast<void>(anyGateway().exchangeHandoff(code)); }), 400);
        signIns.push_back(fresh);
    }
    void refresh() {
        ModelSignIn& of = anySignIn();
        const std::size_t generation = below(3) > 0 ? of.pairs.size() : 1 + below(of.pairs.size());
        const std::string token = of.pairs.at(generation - 1).session.refreshToken;
        Session session;
        const int status = refusalOf([&] { session = anyGateway().refresh(token); });
        ASSERT_EQ(status, of.refresh(generation, now)) << "generation " << generation;
        if (status == 200) of.pairs.push_back({session, now});
    }
    void use() {
        ModelSignIn& of = anySignIn();
        const std::size_t generation = below(2) > 0 ? of.pairs.size() : 1 + below(of.pairs.size());
        const auto known = anyGateway().identify(of.pairs.at(generation - 1).session.token);
        ASSERT_EQ(known.has_value(), of.isValid(generation, now));
        if (known) of.confirmed = std::max(of.confirmed, generation);
    }
    void signOut() {
        ModelSignIn& of = anySignIn();
        const auto known = anyGateway().identify(of.pairs.back().session.token);
        ASSERT_EQ(known.has_value(), of.isValid(of.pairs.size(), now));
        if (!known) return;
        static_cast<void>(anyGateway().signOut(*known));
        of.hasEnded = true;
    }
    void rename() {
        ModelSignIn& of = anySignIn();
        const auto known = anyGateway().identify(of.pairs.back().session.token);
        if (!known) return;
        of.confirmed = std::max(of.confirmed, of.pairs.size());
        name = "name " + std::to_string(below(1'000'000));
        ProfileChange change;
        change.firstName = name;
        static_cast<void>(anyGateway().updateProfile(*known, change));
    }
    void wait() {
        const std::array<std::int64_t, 5> spans = {1, 4, 11, 61, kAccessLife};
        const std::int64_t span = spans.at(below(spans.size()));
        clock.advanceSeconds(span);
        now += span;
    }
    void step() {
        const std::size_t kind = signIns.empty() ? 0 : below(20);
        if (kind < 2) return signIn();
        if (kind < 9) return refresh();
        if (kind < 14) return use();
        if (kind < 15) return signOut();
        if (kind < 16) return rename();
        return wait();
    }
    void expectAgreement() {
        for (const auto& gateway : gateways) {
            for (const ModelSignIn& of : signIns) {
                for (std::size_t i = 1; i <= of.pairs.size(); ++i) {
                    const auto known = gateway->identify(of.pairs[i - 1].session.token);
                    ASSERT_EQ(known.has_value(), of.isValid(i, now));
                    if (known) EXPECT_EQ(known->account.firstName, name) << "nothing is lost";
                }
            }
        }
    }

    std::mt19937 random{20'260'701};
    TestState state{GetParam()};
    ManualClock clock;
    std::int64_t now = 0; ///< seconds
    std::vector<std::unique_ptr<AccountService>> gateways;
    std::vector<ModelSignIn> signIns;
    std::string name;
};

INSTANTIATE_TEST_SUITE_P(States, RandomOperationsTest, kBothStates, nameOfState);

TEST_P(RandomOperationsTest, DoWhatTheRulesSay) {
    for (int i = 0; i < 1500; ++i) {
        step();
        ASSERT_FALSE(HasFatalFailure()) << "at step " << i;
    }
    expectAgreement();
}

/// What threads that press on at once have to leave true.
class CrowdedSignInsTest : public ::testing::Test {
  protected:
    /// Trades tokens, whoever may have had them before, until the end of its rounds.
    void press(AccountService& gateway, unsigned seed) {
        std::mt19937 random(seed);
        for (int i = 0; i < 60; ++i) {
            const std::string token = anyToken(random);
            Session session;
            const int status = refusalOf([&] { session = gateway.refresh(token); });
            const std::scoped_lock lock(mutex);
            if (status != 200) continue;
            ++trades[token];
            tokens.push_back(session.refreshToken);
            sessions.push_back(session);
        }
    }
    std::string anyToken(std::mt19937& random) {
        const std::scoped_lock lock(mutex);
        return tokens[std::uniform_int_distribution<std::size_t>(0, tokens.size() - 1)(random)];
    }

    std::vector<Session> copyOfSessions() {
        const std::scoped_lock lock(mutex);
        return sessions;
    }

    TestState state{StateKind::Server};
    ManualClock clock; // stands still, so that no answer counts as lost
    AccountService here{state.open(), clock};
    AccountService there{state.open(), clock};
    std::mutex mutex;
    std::vector<std::string> tokens;
    std::vector<Session> sessions;
    std::map<std::string, int> trades;
};

TEST_F(CrowdedSignInsTest, NoTokenIsTradedTwice) {
    for (int i = 0; i < 3; ++i) {
        sessions.push_back(here.exchangeHandoff(here.createHandoff("ada")));
        tokens.push_back(sessions.back().refreshToken);
    }
    std::vector<std::thread> threads;
    threads.reserve(6);
    for (unsigned i = 0; i < 6; ++i)
        threads.emplace_back([&, i] { press(i % 2 == 0 ? here : there, i); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_FALSE(trades.empty());
    for (const auto& [token, count] : trades)
        EXPECT_EQ(count, 1);
}

TEST_F(CrowdedSignInsTest, WhatWasEndedStaysEndedWhileOthersTradeItsTokens) {
    for (int round = 0; round < 10; ++round) {
        const Session first = here.exchangeHandoff(here.createHandoff("ada"));
        const Identity identity = here.identify(first.token).value();
        tokens = {first.refreshToken};
        sessions = {first};
        std::thread trading([&] { press(there, static_cast<unsigned>(round)); });
        static_cast<void>(here.signOut(identity));
        for (const Session& session : copyOfSessions())
            EXPECT_FALSE(there.identify(session.token).has_value());
        trading.join();
        for (const Session& session : copyOfSessions()) {
            EXPECT_FALSE(here.identify(session.token).has_value());
            EXPECT_EQ(refusalOf([&] { static_cast<void>(there.refresh(session.refreshToken)); }),
                      401);
        }
    }
}

} // namespace
} // namespace vorq::gateway::testing
