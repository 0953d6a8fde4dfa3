// What the gateway adds to a server of its own library that has nothing in it: until the first
// event of many streams of a provider, for short requests, and for a refresh beside the streams.
//
//   bench-gateway [vorq-gateway]   the gateway of this build unless another is given

#include "gateway/BareServer.h"
#include "gateway/LoadClient.h"
#include "gateway/process/ChildProcess.h"
#include "gateway/support/TemporaryFolder.h"
#include "support/ProcessLimits.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>
#include <vector>

namespace {

using namespace vorq::bench;
using nlohmann::json;
using vorq::gateway::testing::ChildProcess;
using vorq::gateway::testing::TemporaryFolder;

constexpr int kRounds = 3;

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
        : program_(program), server_(program, {"serve", "--port", "0"}, environment(providerPort)) {
        const std::string line = server_.readLine();
        port = std::stoi(line.substr(line.rfind(':') + 1));
        ChildProcess handoff(program_, {"handoff"}, environment(providerPort));
        const std::string link = handoff.readLine();
        const json code = {{"code", link.substr(link.find('=') + 1)}};
        const LoadRequest request{port, "/auth/mac-handoff/exchange", code.dump()};
        const json session = documentOf(sendTogether(request, 1).front());
        token = session.value("token", "");
        refreshToken = session.value("refreshToken", "");
    }
    ~Gateway() {
        server_.signal(SIGTERM);
        server_.wait();
    }
    Gateway(const Gateway&) = delete;
    Gateway& operator=(const Gateway&) = delete;

    /// In seconds.
    [[nodiscard]] double processorTime() const {
        clockid_t clock{};
        timespec time{};
        clock_getcpuclockid(server_.pid(), &clock);
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
    }

    int port = 0;
    std::string token;
    std::string refreshToken;

  private:
    std::vector<std::pair<std::string, std::string>> environment(int providerPort) const {
        return {{"HOME", folder_.path().string()},
                {"VORQ_PROVIDER_URL", "http://127.0.0.1:" + std::to_string(providerPort)}};
    }

    TemporaryFolder folder_;
    std::string program_;
    ChildProcess server_;
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

void compareStreams(Gateway& gateway, const BareServer& bare, int count) {
    std::printf("\n%d provider streams at once\n", count);
    const LoadRequest plain{bare.port(), "/stream", "{}"};
    const LoadRequest prompt{gateway.port, "/ai/prompt",
                             json({{"prompt", "hello"}, {"stream", true}}).dump(), gateway.token};
    for (int round = 0; round < kRounds; ++round) {
        printStreams("bare", sendTogether(plain, count));
        std::string lastToken = gateway.refreshToken;
        Beside refreshes{.first = refreshRequest(gateway.port, lastToken),
                         .next = [&](const LoadAnswer& answer) {
                             lastToken = documentOf(answer).value("refreshToken", lastToken);
                             return refreshRequest(gateway.port, lastToken);
                         }};
        printStreams("gateway", sendTogether(prompt, count, refreshes));
        gateway.refreshToken = lastToken;
        std::vector<double> times;
        long refused = 0;
        for (const LoadAnswer& answer : refreshes.answers) {
            times.push_back(answer.total);
            refused += answer.status == 200 ? 0 : 1;
        }
        if (times.empty()) continue;
        std::printf("  %-8s p50 %.1f ms  p95 %.1f ms  longest %.1f ms   refused %ld of %zu\n",
                    "refresh", percentile(times, 0.5), percentile(times, 0.95),
                    percentile(times, 1), refused, times.size());
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

/// On a machine that does other work too, the ratio of the costs says more than that of the paces.
void compareShort(const Gateway& gateway, BareServer& bare, int clients) {
    const LoadRequest plain{bare.port(), "/", "{}"};
    const LoadRequest stranger{gateway.port, "/ai/prompt", "{}"};
    const LoadRequest known{gateway.port, "/ai/prompt", "{}", gateway.token};
    const auto ofGateway = [&] { return gateway.processorTime(); };
    std::printf("\nshort requests, %d at once\n", clients);
    for (int round = 0; round < kRounds; ++round) {
        int failures = 0;
        const Pace base = paceOf(plain, clients, failures, [&] { return bare.processorTime(); });
        std::printf("  bare            %7.0f a second, %5.0f us each\n", base.perSecond, base.cost);
        for (const auto& [name, request] :
             {std::pair("without a token", stranger), std::pair("with one       ", known)}) {
            const Pace pace = paceOf(request, clients, failures, ofGateway);
            std::printf("  %s %7.0f a second (%.2f), %5.0f us each (%.2f)   failed %d\n", name,
                        pace.perSecond, base.perSecond / pace.perSecond, pace.cost,
                        pace.cost / base.cost, failures);
        }
        std::fflush(stdout);
    }
}

} // namespace

int main(int argc, char** argv) {
    vorq::gateway::raiseFileLimit();
    BareServer bare({});
    Gateway gateway(argc > 1 ? argv[1] : VORQ_GATEWAY_PROGRAM, bare.port());
    if (gateway.token.empty()) {
        std::fputs("The gateway did not sign in.\n", stderr);
        return 1;
    }
    compareShort(gateway, bare, 24);
    compareShort(gateway, bare, 200);
    compareStreams(gateway, bare, 200);
    compareStreams(gateway, bare, 1000);
    return 0;
}
