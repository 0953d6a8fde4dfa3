// What the gateway adds to a server of its own library that has nothing in it: until the first
// event of many streams of a provider, for short requests, and for a refresh beside the streams.
//
//   bench-gateway [PART…] [PROGRAM…]
//
// A part is one of short, streams, early-streams and crowd; all of them unless some are named. The
// early streams have their first word after 50 ms instead of 500. A program is a vorq-gateway, that
// of this build unless others are named, which take turns.

#include "doubles/gateway/ChildProcess.h"
#include "doubles/gateway/TemporaryFolder.h"
#include "gateway/BareServer.h"
#include "gateway/LoadClient.h"
#include "support/ProcessLimits.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace vorq::bench;
using namespace std::chrono_literals;
using nlohmann::json;
using vorq::gateway::testing::ChildProcess;
using vorq::gateway::testing::TemporaryFolder;

constexpr int kRounds = 3;
constexpr std::array<std::string_view, 4> kParts = {"short", "early-streams", "streams", "crowd"};

double percentile(std::vector<double> values, double share) {
    std::ranges::sort(values);
    return values.at(static_cast<std::size_t>(share * static_cast<double>(values.size() - 1)));
}

json documentOf(const LoadAnswer& answer) {
    const std::size_t body = answer.bytes.find("\r\n\r\n");
    return body == std::string::npos ? json()
                                     : json::parse(answer.bytes.substr(body + 4), nullptr, false);
}

/// A gateway in front of the provider, and its account's tokens.
class Gateway {
  public:
    Gateway(const std::string& program, int providerPort)
        : m_program(program),
          m_server(program, {"serve", "--port", "0"}, environment(providerPort)) {
        const std::string line = m_server.readLine();
        port = std::stoi(line.substr(line.rfind(':') + 1));
        ChildProcess handoff(m_program, {"handoff"}, environment(providerPort));
        const std::string link = handoff.readLine();
        const json code = {{"code", link.substr(link.find('=') + 1)}};
        const LoadRequest request{port, "/auth/mac-handoff/exchange", code.dump()};
        const json session = documentOf(sendTogether(request, 1).front());
        token = session.value("token", "");
        refreshToken = session.value("refreshToken", "");
        if (token.empty()) throw std::runtime_error("The gateway did not sign in.");
    }
    ~Gateway() {
        m_server.signal(SIGTERM);
        m_server.wait();
    }
    Gateway(const Gateway&) = delete;
    Gateway& operator=(const Gateway&) = delete;

    /// In seconds.
    [[nodiscard]] double processorTime() const {
        clockid_t clock{};
        timespec time{};
        clock_getcpuclockid(m_server.pid(), &clock);
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    }

    int port = 0;
    std::string token;
    std::string refreshToken;

  private:
    std::vector<std::pair<std::string, std::string>> environment(int providerPort) const {
        return {{"HOME", m_folder.path().string()},
                {"VORQ_PROVIDER_URL", "http://127.0.0.1:" + std::to_string(providerPort)}};
    }

    TemporaryFolder m_folder;
    std::string m_program;
    ChildProcess m_server;
};

void printStreams(const char* name, const std::vector<LoadAnswer>& answers) {
    std::vector<double> firsts;
    std::vector<double> totals;
    for (const LoadAnswer& answer : answers) {
        firsts.push_back(answer.first);
        totals.push_back(answer.total);
    }
    const auto failed =
        std::ranges::count_if(answers, [](const LoadAnswer& answer) { return !answer.isDone(); });
    std::printf("  %-8s first event p50 %8.1f ms  p95 %8.1f ms   end p50 %8.1f ms  p95 %8.1f ms"
                "   failed %ld of %zu\n",
                name, percentile(firsts, 0.5), percentile(firsts, 0.95), percentile(totals, 0.5),
                percentile(totals, 0.95), failed, answers.size());
    std::fflush(stdout);
}

LoadRequest refreshRequest(int port, const std::string& token) {
    return {port, "/auth/refresh", json({{"refreshToken", token}}).dump()};
}

/// One or more gateways in front of one provider, and the bare server beside them.
struct Contest {
    explicit Contest(const std::vector<std::string>& programs, StreamScript script = {})
        : bare(script) {
        for (const std::string& program : programs)
            gateways.push_back(std::make_unique<Gateway>(program, bare.port()));
    }

    BareServer bare;
    std::vector<std::unique_ptr<Gateway>> gateways;
};

void printRefreshes(const std::vector<LoadAnswer>& answers) {
    if (answers.empty()) return;
    std::vector<double> times;
    for (const LoadAnswer& answer : answers)
        times.push_back(answer.total);
    const auto refused = std::ranges::count_if(
        answers, [](const LoadAnswer& answer) { return answer.status != 200; });
    std::printf("  %-8s p50 %.1f ms  p95 %.1f ms  longest %.1f ms   refused %ld of %zu\n",
                "refresh", percentile(times, 0.5), percentile(times, 0.95), percentile(times, 1),
                refused, times.size());
}

void runStreams(Gateway& gateway, int count) {
    const LoadRequest prompt{gateway.port, "/ai/prompt",
                             json({{"prompt", "hello"}, {"stream", true}}).dump(), gateway.token};
    std::string lastToken = gateway.refreshToken;
    Beside refreshes{.first = refreshRequest(gateway.port, lastToken),
                     .next = [&](const LoadAnswer& answer) {
                         lastToken = documentOf(answer).value("refreshToken", lastToken);
                         return refreshRequest(gateway.port, lastToken);
                     }};
    const double before = gateway.processorTime();
    const std::vector<LoadAnswer> answers = sendTogether(prompt, count, refreshes);
    const double cost = gateway.processorTime() - before;
    gateway.refreshToken = lastToken;
    printStreams("gateway", answers);
    printRefreshes(refreshes.answers);
    std::printf("  %-8s %.0f us of processor time for each stream\n", "", cost * 1e6 / count);
}

void compareStreams(const std::vector<std::string>& programs, const StreamScript& script,
                    int count) {
    std::printf("\n%d provider streams at once, first word after %d ms\n", count,
                static_cast<int>(script.untilFirst.count()));
    const Contest contest(programs, script);
    const LoadRequest plain{contest.bare.port(), "/stream", "{}"};
    for (int round = 0; round < kRounds; ++round) {
        printStreams("bare", sendTogether(plain, count));
        for (const auto& gateway : contest.gateways)
            runStreams(*gateway, count);
    }
}

struct Pace {
    double perSecond = 0;
    /// Microseconds of the server's processor time for each answer.
    double cost = 0;
};

/// `processorTime` is the server's.
Pace paceOf(const LoadRequest& request, int clients, int& failures,
            const std::function<double()>& processorTime) {
    constexpr std::chrono::milliseconds time{1500};
    const double before = processorTime();
    const double perSecond = answersPerSecond(request, clients, time, failures);
    const double seconds = std::chrono::duration<double>(time).count();
    return {perSecond, (processorTime() - before) * 1e6 / (perSecond * seconds)};
}

void printPace(const char* name, const Pace& pace, const Pace& base, int failures) {
    std::printf("  %s %7.0f a second (%.2f), %5.0f us each (%.2f)   failed %d\n", name,
                pace.perSecond, base.perSecond / pace.perSecond, pace.cost, pace.cost / base.cost,
                failures);
}

/// On a machine that does other work too, the ratio of the costs says more than that of the paces.
void compareShort(Contest& contest, int clients) {
    const LoadRequest plain{contest.bare.port(), "/", "{}"};
    std::printf("\nshort requests, %d at once\n", clients);
    for (int round = 0; round < kRounds; ++round) {
        int failures = 0;
        const Pace base =
            paceOf(plain, clients, failures, [&] { return contest.bare.processorTime(); });
        printPace("bare           ", base, base, failures);
        for (const auto& gateway : contest.gateways) {
            const auto ofGateway = [&] { return gateway->processorTime(); };
            LoadRequest request{gateway->port, "/ai/prompt", "{}"};
            printPace("without a token", paceOf(request, clients, failures, ofGateway), base,
                      failures);
            request.token = gateway->token;
            printPace("with one       ", paceOf(request, clients, failures, ofGateway), base,
                      failures);
        }
        std::fflush(stdout);
    }
}

} // namespace

int main(int argc, char** argv) {
    vorq::gateway::raiseFileLimit();
    std::vector<std::string> parts;
    std::vector<std::string> programs;
    for (const char* argument : std::span(argv, static_cast<std::size_t>(argc)).subspan(1)) {
        const bool isPart = std::ranges::find(kParts, std::string_view(argument)) != kParts.end();
        (isPart ? parts : programs).emplace_back(argument);
    }
    if (programs.empty()) programs.emplace_back(VORQ_GATEWAY_PROGRAM);
    const auto isWanted = [&](const char* part) {
        return parts.empty() || std::ranges::find(parts, part) != parts.end();
    };
    if (isWanted("short")) {
        Contest contest(programs);
        compareShort(contest, 24);
        compareShort(contest, 200);
    }
    if (isWanted("early-streams")) {
        compareStreams(programs, {.untilFirst = 50ms, .pieces = 20}, 200);
    }
    if (isWanted("streams")) compareStreams(programs, {}, 200);
    if (isWanted("crowd")) compareStreams(programs, {}, 1000);
    return 0;
}
