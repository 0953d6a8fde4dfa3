#include "auth/AccountService.h"
#include "doubles/gateway/ManualClock.h"
#include "doubles/gateway/TestState.h"
#include "support/ApiError.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace vorq::gateway::testing {
namespace {

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 60 * kMinute;
constexpr std::int64_t kDay = 24 * kHour;

template<typename Call>
int statusOf(Call call) {
    try {
        static_cast<void>(call());
        return 200;
    } catch (const ApiError& error) {
        return error.status;
    }
}

class AccountServiceTest : public ::testing::TestWithParam<StateKind> {
  protected:
    Session signIn() { return service.exchangeHandoff(service.createHandoff("Ada")); }
    Identity identity(const Session& session) { return service.identify(session.token).value(); }
    bool isValid(const Session& session) { return service.identify(session.token).has_value(); }

    [[nodiscard]] std::filesystem::path whereStored() const {
        return state.isOnServer() ? PostgresServer::shared().dataFolder()
                                  : state.folder.path() / "state";
    }

    TestState state{GetParam()};
    ManualClock clock;
    AccountService service{state.open(), clock};
};

INSTANTIATE_TEST_SUITE_P(States, AccountServiceTest, kBothStates, nameOfState);

TEST_P(AccountServiceTest, HandoffSignsInToTheLocalAccount) {
    const Session session = signIn();
    EXPECT_TRUE(session.signedIn);
    EXPECT_EQ(session.account.email, "ada@localhost");
    EXPECT_EQ(session.account.username, "ada");
    EXPECT_FALSE(session.refreshToken.empty());
    EXPECT_EQ(identity(session).account.email, "ada@localhost");
}

TEST_P(AccountServiceTest, HandoffsOfOneComputerLeadToOneAccount) {
    EXPECT_EQ(signIn().account.id, signIn().account.id);
}

TEST_P(AccountServiceTest, AHandoffCodeWorksOnce) {
    const std::string code = service.createHandoff("ada");
    EXPECT_TRUE(service.exchangeHandoff(code).signedIn);
    EXPECT_EQ(statusOf([&] { return service.exchangeHandoff(code); }), 400);
}

TEST_P(AccountServiceTest, AHandoffCodeExpiresAfterFiveMinutes) {
    const std::string inTime = service.createHandoff("ada");
    const std::string late = service.createHandoff("ada");
    clock.advanceSeconds(5 * kMinute - 1);
    EXPECT_TRUE(service.exchangeHandoff(inTime).signedIn);
    clock.advanceSeconds(1);
    EXPECT_EQ(statusOf([&] { return service.exchangeHandoff(late); }), 400);
}

TEST_P(AccountServiceTest, AnUnknownCodeIsRefused) {
    EXPECT_EQ(statusOf([&] { return service.exchangeHandoff("made up"); }), 400);
    EXPECT_EQ(statusOf([&] { return service.exchangeHandoff(""); }), 400);
}

TEST_P(AccountServiceTest, AnAccessTokenExpiresAfterAnHour) {
    const Session session = signIn();
    clock.advanceSeconds(kHour - 1);
    EXPECT_TRUE(isValid(session));
    clock.advanceSeconds(1);
    EXPECT_FALSE(isValid(session));
}

TEST_P(AccountServiceTest, RefreshGivesANewPairThatWorks) {
    const Session first = signIn();
    clock.advanceSeconds(2 * kHour);
    const Session second = service.refresh(first.refreshToken);
    EXPECT_TRUE(second.signedIn);
    EXPECT_NE(second.token, first.token);
    EXPECT_NE(second.refreshToken, first.refreshToken);
    EXPECT_TRUE(isValid(second));
    EXPECT_TRUE(service.refresh(second.refreshToken).signedIn);
}

TEST_P(AccountServiceTest, ARefreshTokenThatComesAgainAtOnceIsToBeTriedAgain) {
    const Session first = signIn();
    const Session second = service.refresh(first.refreshToken);
    clock.advanceSeconds(3);
    try {
        static_cast<void>(service.refresh(first.refreshToken));
        FAIL() << "traded it twice";
    } catch (const ApiError& error) {
        EXPECT_EQ(error.status, 409);
        EXPECT_EQ(error.retryAfterSeconds, 7);
    }
    EXPECT_TRUE(isValid(second));
    EXPECT_EQ(statusOf([&] { return service.refresh(first.refreshToken); }), 409)
        << "the other of two programs may have used the answer";
    EXPECT_TRUE(isValid(second));
}

TEST_P(AccountServiceTest, UsingTheNewAccessTokenUsesUpTheRefreshToken) {
    const Session first = signIn();
    const Session second = service.refresh(first.refreshToken);
    ASSERT_TRUE(isValid(second));
    clock.advanceSeconds(kMinute);
    EXPECT_EQ(statusOf([&] { return service.refresh(first.refreshToken); }), 401);
    EXPECT_FALSE(isValid(second));
    EXPECT_EQ(statusOf([&] { return service.refresh(second.refreshToken); }), 401);
}

TEST_P(AccountServiceTest, UsingTheOldAccessTokenUsesUpNothing) {
    const Session first = signIn();
    static_cast<void>(service.refresh(first.refreshToken));
    ASSERT_TRUE(isValid(first));
    clock.advanceSeconds(kMinute);
    EXPECT_TRUE(isValid(service.refresh(first.refreshToken)));
}

TEST_P(AccountServiceTest, AnAnswerLostWithTheServerIsGivenAnew) {
    const Session first = signIn();
    const Session lost = service.refresh(first.refreshToken);
    AccountService restarted(state.open(), clock);
    if (state.isOnServer()) {
        EXPECT_EQ(statusOf([&] { return restarted.refresh(first.refreshToken); }), 409)
            << "the gateway that traded it may be another one, and still be answering";
        clock.advanceSeconds(10);
    }
    const Session again = restarted.refresh(first.refreshToken);
    EXPECT_TRUE(restarted.identify(again.token).has_value());
    EXPECT_FALSE(restarted.identify(lost.token).has_value());
}

TEST_P(AccountServiceTest, ARestartForgetsNoUse) {
    const Session first = signIn();
    ASSERT_TRUE(isValid(service.refresh(first.refreshToken)));
    AccountService restarted(state.open(), clock);
    // The gateway that traded it may be another one, and still be answering.
    if (state.isOnServer()) clock.advanceSeconds(10);
    EXPECT_EQ(statusOf([&] { return restarted.refresh(first.refreshToken); }), 401);
}

TEST_P(AccountServiceTest, SettingTheTimeOfDayBackHidesNoTheft) {
    const Session first = signIn();
    const Session second = service.refresh(first.refreshToken);
    const Session third = service.refresh(second.refreshToken);
    clock.advanceSeconds(kMinute);
    clock.setTimeOfDay(-kHour);
    EXPECT_EQ(statusOf([&] { return service.refresh(first.refreshToken); }), 401);
    EXPECT_FALSE(isValid(third));
}

TEST_P(AccountServiceTest, SettingTheTimeOfDayBackDelaysNoAnswerThatWasLost) {
    const Session first = signIn();
    static_cast<void>(service.refresh(first.refreshToken));
    clock.setTimeOfDay(-kHour);
    EXPECT_EQ(statusOf([&] { return service.refresh(first.refreshToken); }), 409);
    clock.advanceSeconds(10);
    EXPECT_TRUE(isValid(service.refresh(first.refreshToken)));
}

TEST_P(AccountServiceTest, ReuseOfAnOldRefreshTokenEndsTheWholeSignIn) {
    const Session first = signIn();
    const Session second = service.refresh(first.refreshToken);
    clock.advanceSeconds(kMinute);
    const Session third = service.refresh(second.refreshToken);
    EXPECT_EQ(statusOf([&] { return service.refresh(first.refreshToken); }), 401);
    EXPECT_FALSE(isValid(third));
    EXPECT_EQ(statusOf([&] { return service.refresh(third.refreshToken); }), 401);
}

TEST_P(AccountServiceTest, AClientEndedBeforeItsAnswerCameMayRefreshAgain) {
    const Session first = signIn();
    static_cast<void>(service.refresh(first.refreshToken));
    clock.advanceSeconds(kMinute);
    const Session again = service.refresh(first.refreshToken);
    EXPECT_TRUE(isValid(again));
    clock.advanceSeconds(kMinute);
    EXPECT_TRUE(service.refresh(again.refreshToken).signedIn);
}

TEST_P(AccountServiceTest, ALostAnswerIsWorthNothingOnceItWasGivenAnew) {
    const Session first = signIn();
    const Session lost = service.refresh(first.refreshToken);
    clock.advanceSeconds(kMinute);
    EXPECT_TRUE(isValid(service.refresh(first.refreshToken)));
    EXPECT_FALSE(isValid(lost));
}

TEST_P(AccountServiceTest, AnAnswerThatWasNotLostAfterAllShowsTheTheft) {
    const Session first = signIn();
    const Session second = service.refresh(first.refreshToken);
    clock.advanceSeconds(kMinute);
    const Session taken = service.refresh(first.refreshToken);
    clock.advanceSeconds(kMinute);
    EXPECT_EQ(statusOf([&] { return service.refresh(second.refreshToken); }), 401);
    EXPECT_FALSE(isValid(taken));
}

TEST_P(AccountServiceTest, ReuseLeavesOtherSignInsAlone) {
    const Session other = signIn();
    const Session first = signIn();
    static_cast<void>(service.refresh(service.refresh(first.refreshToken).refreshToken));
    clock.advanceSeconds(kMinute);
    EXPECT_EQ(statusOf([&] { return service.refresh(first.refreshToken); }), 401);
    EXPECT_TRUE(isValid(other));
    EXPECT_TRUE(service.refresh(other.refreshToken).signedIn);
}

TEST_P(AccountServiceTest, ARefreshTokenExpiresAfterSixtyDays) {
    const Session session = signIn();
    clock.advanceSeconds(60 * kDay - 1);
    const Session renewed = service.refresh(session.refreshToken);
    clock.advanceSeconds(60 * kDay);
    EXPECT_EQ(statusOf([&] { return service.refresh(renewed.refreshToken); }), 401);
}

TEST_P(AccountServiceTest, AnAccessTokenIsNoRefreshToken) {
    const Session session = signIn();
    EXPECT_EQ(statusOf([&] { return service.refresh(session.token); }), 401);
    EXPECT_FALSE(service.identify(session.refreshToken).has_value());
}

TEST_P(AccountServiceTest, SignOutEndsBothTokensOfThisSignInOnly) {
    const Session other = signIn();
    const Session session = signIn();
    EXPECT_FALSE(service.signOut(identity(session)).signedIn);
    EXPECT_FALSE(isValid(session));
    EXPECT_EQ(statusOf([&] { return service.refresh(session.refreshToken); }), 401);
    EXPECT_TRUE(isValid(other));
}

TEST_P(AccountServiceTest, ProfileChangesOnlyWhatIsGiven) {
    const Session session = signIn();
    ProfileChange names;
    names.firstName = " Ada ";
    names.lastName = "Lovelace";
    names.username = "@Countess";
    const Session changed = service.updateProfile(identity(session), names);
    EXPECT_EQ(changed.account.firstName, "Ada");
    EXPECT_EQ(changed.account.username, "countess");
    EXPECT_EQ(changed.token, session.token);
    ProfileChange model;
    model.preferredModel = "openai/o3-mini";
    const Session again = service.updateProfile(identity(session), model);
    EXPECT_EQ(again.account.lastName, "Lovelace");
    EXPECT_EQ(again.account.preferredModel, "openai/o3-mini");
    EXPECT_EQ(signIn().account.preferredModel, "openai/o3-mini");
}

TEST_P(AccountServiceTest, ImpossibleProfilesAreRefused) {
    const Session session = signIn();
    ProfileChange username;
    username.username = "two words";
    EXPECT_EQ(statusOf([&] { return service.updateProfile(identity(session), username); }), 400);
    ProfileChange name;
    name.firstName = std::string(201, 'x');
    EXPECT_EQ(statusOf([&] { return service.updateProfile(identity(session), name); }), 400);
}

TEST_P(AccountServiceTest, TheFirstPasswordNeedsNoOldOneAndThenCounts) {
    const Session session = signIn();
    const auto change = [&](const PrivacyChange& wanted) {
        return statusOf([&] { return service.updatePrivacy(identity(session), wanted); });
    };
    EXPECT_EQ(change({"", "anything", "first password"}), 200);
    EXPECT_EQ(change({"new@example.org", "anything", ""}), 403);
    EXPECT_EQ(change({"", "anything", "second password"}), 403);
    EXPECT_EQ(change({" New@Example.org ", "first password", ""}), 200);
    EXPECT_EQ(identity(session).account.email, "new@example.org");
}

TEST_P(AccountServiceTest, ANewPasswordEndsTheOtherSignIns) {
    const Session other = signIn();
    const Session session = signIn();
    static_cast<void>(service.updatePrivacy(identity(session), {"", "x", "a new password"}));
    EXPECT_TRUE(isValid(session));
    EXPECT_TRUE(service.refresh(session.refreshToken).signedIn);
    EXPECT_FALSE(isValid(other));
}

TEST_P(AccountServiceTest, ImpossiblePrivacyChangesAreRefused) {
    const Session session = signIn();
    const auto change = [&](const PrivacyChange& wanted) {
        return statusOf([&] { return service.updatePrivacy(identity(session), wanted); });
    };
    EXPECT_EQ(change({"a@b", "", "long enough"}), 400);
    EXPECT_EQ(change({"", "x", ""}), 400);
    EXPECT_EQ(change({"", "x", "7 chars"}), 400);
    EXPECT_EQ(change({"no address", "x", ""}), 400);
    EXPECT_EQ(change({"a@b@c", "x", ""}), 400);
    EXPECT_EQ(change({"", "x", std::string(1025, 'x')}), 400);
}

TEST_P(AccountServiceTest, ThePasswordsLengthIsCountedInCharacters) {
    const Session session = signIn();
    const auto change = [&](const std::string& password) {
        return statusOf(
            [&] { return service.updatePrivacy(identity(session), {"", "x", password}); });
    };
    EXPECT_EQ(change("пароль7"), 400) << "seven characters in fourteen bytes";
    EXPECT_EQ(change("密码"), 400);
    EXPECT_EQ(change("пароль78"), 200);
}

TEST_P(AccountServiceTest, TwoProgramsShareOneState) {
    AccountService second(state.open(), clock);
    const std::string code = second.createHandoff("ada");
    EXPECT_TRUE(service.exchangeHandoff(code).signedIn);
    EXPECT_EQ(statusOf([&] { return second.exchangeHandoff(code); }), 400);
}

TEST_P(AccountServiceTest, WhatAnotherProgramEndsEndsAtOnceHere) {
    const Session stays = signIn();
    const Session leaves = signIn();
    AccountService second(state.open(), clock);
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(isValid(leaves) && isValid(stays));
    static_cast<void>(second.signOut(second.identify(leaves.token).value()));
    EXPECT_FALSE(isValid(leaves));
    EXPECT_TRUE(isValid(stays));
    const Session other = signIn();
    ASSERT_TRUE(isValid(other));
    static_cast<void>(
        second.updatePrivacy(second.identify(stays.token).value(), {"", "x", "a new password"}));
    EXPECT_FALSE(isValid(other));
    EXPECT_TRUE(isValid(stays));
}

TEST_P(AccountServiceTest, WhatAnotherProgramChangesInTheAccountIsSeenAtOnce) {
    const Session session = signIn();
    AccountService second(state.open(), clock);
    ASSERT_EQ(identity(session).account.preferredModel, "");
    ProfileChange change;
    change.preferredModel = "openai/o3-mini";
    static_cast<void>(second.updateProfile(second.identify(session.token).value(), change));
    EXPECT_EQ(identity(session).account.preferredModel, "openai/o3-mini");
}

TEST_P(AccountServiceTest, ManyThatUseANewTokenAtOnceUseUpTheRefreshToken) {
    const Session first = signIn();
    const Session second = service.refresh(first.refreshToken);
    std::vector<std::thread> threads;
    threads.reserve(8);
    std::atomic<int> known = 0;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] { known += isValid(second) ? 1 : 0; });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(known, 8);
    clock.advanceSeconds(kMinute);
    EXPECT_EQ(statusOf([&] { return service.refresh(first.refreshToken); }), 401);
    EXPECT_FALSE(isValid(second));
}

TEST_P(AccountServiceTest, AnAddressThatIsTakenKeepsNobodyFromTheLocalAccount) {
    {
        const auto database = state.open();
        auto turn = database->write();
        Account stranger;
        stranger.email = "ada@localhost";
        AccountTable(turn.database()).insert(stranger, clock.nowMs());
        turn.commit();
    }
    const Session session = signIn();
    EXPECT_EQ(session.account.username, "ada");
    EXPECT_EQ(session.account.email, "ada.2@localhost");
    EXPECT_EQ(signIn().account.id, session.account.id);
}

TEST_P(AccountServiceTest, TheLocalAccountAloneHasAnAddressOfThisComputer) {
    const Session local = signIn();
    const auto change = [&](const Session& session, const std::string& email) {
        return statusOf([&] { return service.updatePrivacy(identity(session), {email, "x", ""}); });
    };
    EXPECT_EQ(change(local, "ada@example.org"), 200);
    EXPECT_EQ(change(local, "ada@localhost"), 200);
}

TEST_P(AccountServiceTest, ALoginNameThatIsNoUsernameIsReplaced) {
    EXPECT_EQ(service.exchangeHandoff(service.createHandoff("DOMAIN\\ada b")).account.email,
              "user@localhost");
}

TEST_P(AccountServiceTest, NoSecretIsStoredInClear) {
    const std::string code = service.createHandoff("ada");
    const Session session = signIn();
    static_cast<void>(service.updatePrivacy(identity(session), {"", "none yet", "open sesame"}));
    if (state.isOnServer()) PostgresServer::shared().administer("CHECKPOINT");
    std::string bytes;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(whereStored())) {
        if (entry.is_regular_file()) bytes += readFile(entry.path());
    }
    ASSERT_NE(bytes.find("ada@localhost"), std::string::npos);
    for (const std::string& secret :
         {code, session.token, session.refreshToken, std::string("open sesame")}) {
        EXPECT_EQ(bytes.find(secret), std::string::npos);
    }
}

TEST(AccountsInAFileTest, AUseWhileAnotherProgramHoldsTheFileCountsAsWell) {
    const TestState state(StateKind::File);
    ManualClock clock;
    AccountService service(state.open(), clock);
    const Session first = service.exchangeHandoff(service.createHandoff("Ada"));
    const Session second = service.refresh(first.refreshToken);
    {
        SqliteDatabase other = openFile(state.folder.path() / "state");
        const Transaction transaction(other);
        EXPECT_TRUE(service.identify(second.token).has_value());
    }
    clock.advanceSeconds(kMinute);
    EXPECT_EQ(statusOf([&] { return service.refresh(first.refreshToken); }), 401);
    EXPECT_FALSE(service.identify(second.token).has_value());
}

TEST(AccountsInAFileTest, AFileInPlaceOfTheOldOneDecidesFromThenOn) {
    const TemporaryFolder folder;
    const ManualClock clock;
    const auto state = folder.path() / "state";
    const auto open = [&] { return openFile(state); };
    AccountService reopening(std::make_unique<SharedStateFile>(open(), open), clock);
    const Session session = reopening.exchangeHandoff(reopening.createHandoff("ada"));
    ASSERT_TRUE(reopening.identify(session.token).has_value());
    const auto aside = folder.path() / "aside";
    std::filesystem::rename(state, aside);
    {
        const SqliteDatabase fresh = open();
    }
    EXPECT_FALSE(reopening.identify(session.token).has_value());
    EXPECT_EQ(statusOf([&] { return reopening.refresh(session.refreshToken); }), 401);
    const Session again = reopening.exchangeHandoff(reopening.createHandoff("ada"));
    EXPECT_TRUE(reopening.identify(again.token).has_value());
    std::filesystem::remove_all(state);
    std::filesystem::rename(aside, state);
    EXPECT_TRUE(reopening.identify(session.token).has_value());
    EXPECT_FALSE(reopening.identify(again.token).has_value());
}

} // namespace
} // namespace vorq::gateway::testing
