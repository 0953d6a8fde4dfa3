#include "backend/http/CurlTransport.h"
#include "doubles/backend/Awaiting.h"
#include "platform/testing/ManualClock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <dlfcn.h>
#include <netdb.h>
#include <semaphore>

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr const char* slowName = "slow.invalid";
std::atomic<bool> isLookingUp = false;
std::binary_semaphore answer{0};

} // namespace

// In place of the system's: a name whose server does not answer.
extern "C" [[gnu::visibility("default")]] int
getaddrinfo(const char* node, const char* service, const addrinfo* hints, addrinfo** result) {
    if (node && std::strcmp(node, slowName) == 0) {
        isLookingUp = true;
        static_cast<void>(answer.try_acquire_for(10s));
        isLookingUp = false;
        return EAI_AGAIN;
    }
    static const auto real =
        reinterpret_cast<decltype(&getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(node, service, hints, result);
}

namespace vorq {
namespace {

TEST(NameLookup, AStopDoesNotWaitForIt) {
    qputenv("no_proxy", slowName);
    ManualClock clock;
    CurlTransport transport(clock);
    std::stop_source stop;
    const Outcome outcome(transport.open({.url = QUrl(u"http://"_s + QLatin1StringView(slowName)),
                                          .method = "GET",
                                          .headers = {},
                                          .body = {},
                                          .timeout = 30s},
                                         stop.get_token()));
    const bool began = turnUntil([] { return isLookingUp.load(); });
    qunsetenv("no_proxy");
    ASSERT_TRUE(began);
    stop.request_stop();
    ASSERT_TRUE(outcome.wait());
    EXPECT_TRUE(outcome.cancelled());
    EXPECT_TRUE(isLookingUp);
    answer.release();
    EXPECT_TRUE(turnUntil([] { return !isLookingUp; }));
}

} // namespace
} // namespace vorq
