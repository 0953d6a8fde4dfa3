// What a second gateway over the same PostgreSQL adds: sign-ins with a password a second, and
// refreshes a second, of one gateway and of two. Beside them stands what the processor allows: how
// many passwords one thread hashes a second, and two threads at once; and what a sign-in costs it
// in the gateway, where one thread does all but a little of it, and elsewhere.
//
//   bench-team [SECONDS]
//
// It brings up the server, which writes to the disk as it would in use.

#include "auth/WebAccounts.h"
#include "doubles/gateway/BrowserDouble.h"
#include "doubles/gateway/ChildProcess.h"
#include "doubles/gateway/PostgresServer.h"
#include "doubles/gateway/TemporaryFolder.h"
#include "storage/postgres/PostgresPool.h"
#include "support/Secrets.h"

#include <httplib.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using namespace vorq::gateway;
using namespace vorq::gateway::testing;
using nlohmann::json;
using Steady = std::chrono::steady_clock;

constexpr int kRounds = 3;
constexpr int kClients = 8;
constexpr auto kPassword = "open sesame";

std::string emailOf(int client) {
    return "user" + std::to_string(client) + "@example.org";
}

/// Seconds that the process and its ended children have computed.
double processorSeconds(const std::string& process) {
    std::ifstream file("/proc/" + process + "/stat");
    std::string text((std::istreambuf_iterator<char>(file)), {});
    std::istringstream fields(text.substr(std::min(text.size(), text.rfind(')') + 1)));
    constexpr int before = 11; // the state and what follows it
    std::string skipped;
    for (int i = 0; i < before; ++i)
        fields >> skipped;
    double all = 0;
    for (int i = 0; i < 4; ++i) {
        double ticks = 0;
        fields >> ticks;
        all += ticks;
    }
    return all / static_cast<double>(sysconf(_SC_CLK_TCK));
}

/// The same of a server and all its processes.
double serverSeconds(const PostgresServer& server) {
    std::string first;
    std::getline(std::ifstream(server.dataFolder() / "postmaster.pid"), first);
    double all = processorSeconds(first);
    std::ifstream children("/proc/" + first + "/task/" + first + "/children");
    for (std::string child; children >> child;)
        all += processorSeconds(child);
    return all;
}

/// How often `work`, called with the number of its thread, is done a second by all threads.
double perSecond(int threads, std::chrono::milliseconds time,
                 const std::function<void(int thread)>& work) {
    std::atomic<int> done = 0;
    const auto begin = Steady::now();
    std::vector<std::thread> all;
    for (int i = 0; i < threads; ++i) {
        all.emplace_back([&, i] {
            for (; Steady::now() < begin + time; ++done)
                work(i);
        });
    }
    for (std::thread& thread : all)
        thread.join();
    return done / std::chrono::duration<double>(Steady::now() - begin).count();
}

class Gateway {
  public:
    explicit Gateway(const std::string& database)
        : m_process(VORQ_GATEWAY_PROGRAM, {"serve", "--port", "0", "--database", database},
                    {{"HOME", m_home.path().string()}, {"XDG_CONFIG_HOME", ""}}) {
        const std::string line = m_process.readLine();
        port = std::stoi(line.substr(line.rfind(':') + 1));
    }
    ~Gateway() {
        m_process.signal(SIGTERM);
        m_process.wait();
    }

    [[nodiscard]] double seconds() const {
        return processorSeconds(std::to_string(m_process.pid()));
    }

    int port = 0;

  private:
    TemporaryFolder m_home;
    ChildProcess m_process;
};

/// One person who signs in with the password, again and again.
class Person {
  public:
    Person(int gatewayPort, int number) : m_browser(gatewayPort), m_number(number) {
        m_page = m_browser.get("/signin.html");
        m_form = m_browser.cookies;
    }
    void signIn() {
        m_browser.cookies = m_form;
        const ShownPage answer = m_browser.submit(
            m_page, "/signin.html", {{"email", emailOf(m_number)}, {"password", kPassword}});
        if (answer.status != 303) throw std::runtime_error("no sign-in: " + answer.html);
    }

  private:
    BrowserDouble m_browser;
    int m_number;
    ShownPage m_page;
    std::map<std::string, std::string> m_form;
};

/// One program that trades its refresh token, again and again.
class Program {
  public:
    Program(int gatewayPort, const std::string& code) : m_client("127.0.0.1", gatewayPort) {
        take("/auth/mac-handoff/exchange", {{"code", code}});
    }
    void refresh() { take("/auth/refresh", {{"refreshToken", m_token}}); }

  private:
    void take(const std::string& path, const json& body) {
        const httplib::Result answer = m_client.Post(path, body.dump(), "application/json");
        if (!answer || answer->status != 200) throw std::runtime_error("no answer at " + path);
        m_token = json::parse(answer->body).value("refreshToken", "");
    }

    httplib::Client m_client;
    std::string m_token;
};

struct Rates {
    double signIns = 0;
    double refreshes = 0;
    /// Of the processor, for a sign-in.
    double msInGateway = 0;
    double msElsewhere = 0;
};

Rates measure(std::size_t gateways, const PostgresServer& server, const std::string& database,
              AccountService& accounts, std::chrono::milliseconds time) {
    std::vector<std::unique_ptr<Gateway>> servers;
    for (std::size_t i = 0; i < gateways; ++i)
        servers.push_back(std::make_unique<Gateway>(database));
    const auto portOf = [&](int client) {
        return servers[static_cast<std::size_t>(client) % servers.size()]->port;
    };
    std::vector<std::unique_ptr<Person>> people;
    std::vector<std::unique_ptr<Program>> programs;
    for (int i = 0; i < kClients; ++i) {
        people.push_back(std::make_unique<Person>(portOf(i), i));
        programs.push_back(std::make_unique<Program>(portOf(i), accounts.createHandoff("ada")));
    }
    const auto at = [](auto& all, int i) -> auto& { return *all[static_cast<std::size_t>(i)]; };
    const auto inGateways = [&] {
        double all = 0;
        for (const auto& each : servers)
            all += each->seconds();
        return all;
    };
    const auto elsewhere = [&] { return serverSeconds(server) + processorSeconds("self"); };
    Rates rates;
    const double gatewayBefore = inGateways();
    const double elsewhereBefore = elsewhere();
    std::atomic<int> signIns = 0;
    rates.signIns = perSecond(kClients, time, [&](int i) {
        at(people, i).signIn();
        ++signIns;
    });
    rates.msInGateway = 1000 * (inGateways() - gatewayBefore) / signIns;
    rates.msElsewhere = 1000 * (elsewhere() - elsewhereBefore) / signIns;
    rates.refreshes = perSecond(kClients, time, [&](int i) { at(programs, i).refresh(); });
    return rates;
}

double middle(std::vector<double> values) {
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

double hashesPerSecond(int threads, std::chrono::milliseconds time) {
    return perSecond(threads, time, [](int) { static_cast<void>(hashOfPassword(kPassword)); });
}

} // namespace

int main(int argc, char** argv) {
    const std::chrono::milliseconds time(1000 * (argc > 1 ? std::atoi(argv[1]) : 5));
    initSecrets();
    PostgresServer server(PostgresServer::Writes::ToTheDisk);
    const std::string database = server.freshDatabase();
    const SystemClock clock;
    AccountService accounts(std::make_unique<PostgresPool>(database), clock);
    WebAccounts web(accounts, clock);
    for (int i = 0; i < kClients; ++i)
        static_cast<void>(web.signUp({emailOf(i), kPassword}, {.address = emailOf(i)}));

    std::vector<double> signIns;
    std::vector<double> refreshes;
    std::vector<double> hashes;
    for (int round = 0; round < kRounds; ++round) {
        const double one = hashesPerSecond(1, time);
        const double two = hashesPerSecond(2, time);
        const Rates alone = measure(1, server, database, accounts, time);
        const Rates both = measure(2, server, database, accounts, time);
        hashes.push_back(two / one);
        signIns.push_back(both.signIns / alone.signIns);
        refreshes.push_back(both.refreshes / alone.refreshes);
        std::printf("hashes/s    one thread %7.1f   two threads  %7.1f   x %.2f\n", one, two,
                    hashes.back());
        std::printf("sign-ins/s  one gateway %6.1f   two gateways %7.1f   x %.2f\n", alone.signIns,
                    both.signIns, signIns.back());
        std::printf("            of the processor a sign-in takes %.1f ms in the gateway, %.1f ms "
                    "elsewhere\n",
                    both.msInGateway, both.msElsewhere);
        std::printf("refreshes/s one gateway %6.1f   two gateways %7.1f   x %.2f\n",
                    alone.refreshes, both.refreshes, refreshes.back());
    }
    std::printf("middle: hashes x %.2f, sign-ins x %.2f, refreshes x %.2f, on %u processors\n",
                middle(hashes), middle(signIns), middle(refreshes),
                std::thread::hardware_concurrency());
    return 0;
}
