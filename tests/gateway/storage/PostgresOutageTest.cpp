#include "doubles/gateway/ListeningPort.h"
#include "doubles/gateway/TestGateway.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>
#include <vector>

namespace vorq::gateway::testing {
namespace {

using namespace std::chrono_literals;
using nlohmann::json;
using Steady = std::chrono::steady_clock;

/// A gateway over a server that goes away in every way that servers do.
class PostgresOutageTest : public ::testing::Test {
  protected:
    PostgresOutageTest() { gateway.signIn(); }
    ~PostgresOutageTest() override {
        server.thaw();
        server.stop();
        server.start(); // for the next test
    }

    Answer profile(const std::string& name) {
        return gateway.post("/auth/profile", {{"firstName", name}});
    }
    /// Within a time in which nobody would think that it hangs.
    void expectRefused() {
        const auto begin = Steady::now();
        const Answer answer = profile("nobody");
        EXPECT_LT(Steady::now() - begin, 20s);
        EXPECT_EQ(answer.status, 503) << answer.text;
        EXPECT_EQ(answer.headers.count("Retry-After"), 1U);
        EXPECT_TRUE(answer.body.value("error", "").contains("database")) << answer.text;
        EXPECT_FALSE(answer.text.contains("postgres")) << "nothing of how it is reached";
    }
    void expectRecovered() {
        Answer answer;
        for (const auto end = Steady::now() + 60s; answer.status != 200 && Steady::now() < end;)
            answer = profile("Ada");
        EXPECT_EQ(answer.status, 200) << answer.text;
    }

    PostgresServer& server = PostgresServer::shared();
    TestGateway gateway{nullptr, 10, std::make_shared<TestState>(StateKind::Server)};
};

TEST_F(PostgresOutageTest, AServerThatStoppedIsSaidAndUsedAgainWhenItIsBack) {
    server.stop();
    for (int i = 0; i < 3; ++i)
        expectRefused();
    EXPECT_EQ(gateway.post("/auth/refresh", {{"refreshToken", gateway.refreshToken}}).status, 503);
    server.start();
    expectRecovered();
    EXPECT_EQ(gateway.post("/auth/refresh", {{"refreshToken", gateway.refreshToken}}).status, 200);
}

TEST_F(PostgresOutageTest, AnOutageOfAMomentIsWaitedOut) {
    server.stop();
    auto answer = std::async(std::launch::async, [this] { return profile("Ada"); });
    server.start();
    EXPECT_EQ(answer.get().status, 200);
}

TEST_F(PostgresOutageTest, ConnectionsThatTheServerEndedAreMadeAnewUnseen) {
    std::vector<std::future<Answer>> several;
    several.reserve(4);
    for (int i = 0; i < 4; ++i)
        several.push_back(std::async(std::launch::async, [this] { return profile("Ada"); }));
    for (auto& each : several)
        EXPECT_EQ(each.get().status, 200);
    server.administer("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                      "WHERE application_name = 'vorq-gateway' AND pid <> pg_backend_pid()");
    EXPECT_EQ(profile("Ada").status, 200);
    EXPECT_EQ(gateway.post("/auth/refresh", {{"refreshToken", gateway.refreshToken}}).status, 200);
}

TEST_F(PostgresOutageTest, AServerThatFallsSilentKeepsNobodyForever) {
    server.freeze();
    std::vector<std::future<void>> waiting;
    waiting.reserve(3);
    for (int i = 0; i < 3; ++i)
        waiting.push_back(std::async(std::launch::async, [this] { expectRefused(); }));
    const auto begin = Steady::now();
    httplib::Client client = gateway.client();
    EXPECT_EQ(client.Get("/pages/style.css")->status, 200);
    EXPECT_LT(Steady::now() - begin, 5s) << "the network waits for nobody";
    for (auto& each : waiting)
        each.get();
    server.thaw();
    expectRecovered();
}

TEST_F(PostgresOutageTest, AFirstHostThatIsSilentKeepsNobodyFromTheSecond) {
    const ListeningPort silent;
    std::string address = server.freshAddress();
    const std::string_view user = "vorq@";
    address.insert(address.find(user) + user.size(),
                   "127.0.0.1:" + std::to_string(silent.port()) + ",");
    const auto begin = Steady::now();
    PostgresDatabase database(address);
    EXPECT_TRUE(database.prepare("SELECT 7").step());
    EXPECT_LT(Steady::now() - begin, 20s);
}

TEST_F(PostgresOutageTest, ADatabaseThatMayNotBeWrittenIsSaid) {
    server.administer("ALTER ROLE vorq SET default_transaction_read_only = on");
    server.administer("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
                      "WHERE application_name = 'vorq-gateway' AND pid <> pg_backend_pid()");
    expectRefused();
    server.administer("SET TRANSACTION READ WRITE; "
                      "ALTER ROLE vorq RESET default_transaction_read_only");
    expectRecovered();
}

TEST_F(PostgresOutageTest, AFullDiskIsSaid) {
    // As the server says it.
    const std::string schema = gateway.state->schema();
    server.administer("CREATE FUNCTION " + schema +
                      ".full() RETURNS trigger LANGUAGE plpgsql AS "
                      "$$BEGIN RAISE EXCEPTION 'could not extend file: No space left on device' "
                      "USING ERRCODE = '53100'; END$$; "
                      "CREATE TRIGGER full_disk BEFORE UPDATE ON " +
                      schema +
                      ".accounts "
                      "EXECUTE FUNCTION " +
                      schema + ".full()");
    const Answer answer = profile("Ada");
    EXPECT_EQ(answer.status, 503);
    EXPECT_EQ(answer.headers.count("Retry-After"), 1U);
    EXPECT_TRUE(answer.text.contains("disk")) << answer.text;
    server.administer("DROP TRIGGER full_disk ON " + schema + ".accounts");
    expectRecovered();
}

TEST_F(PostgresOutageTest, ALockThatIsHeldIsWaitedForAndThenSaid) {
    PostgresDatabase other(gateway.state->address);
    other.begin();
    other.lock(DatabaseLock::names);
    expectRefused();
    other.commit();
    expectRecovered();
}

TEST_F(PostgresOutageTest, AServerThatIsNotThereAtTheStartIsAnErrorWithItsReason) {
    server.stop();
    try {
        const PostgresPool pool(gateway.state->address);
        FAIL() << "opened it";
    } catch (const std::runtime_error& error) {
        EXPECT_TRUE(std::string(error.what()).contains("Could not open the database"))
            << error.what();
    }
    server.start();
}

} // namespace
} // namespace vorq::gateway::testing
