#include "doubles/gateway/ProviderChain.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <netdb.h>
#include <semaphore>
#include <thread>

namespace {

constexpr const char* kHangingName = "hanging.invalid";
std::atomic<bool> isLookedUp = false;
std::binary_semaphore lookupMayEnd{0};

} // namespace

// In place of the system's: a name whose server does not answer.
extern "C" [[gnu::visibility("default")]] int
getaddrinfo(const char* node, const char* service, const addrinfo* hints, addrinfo** result) {
    if (node != nullptr && std::strcmp(node, kHangingName) == 0) {
        isLookedUp = true;
        static_cast<void>(lookupMayEnd.try_acquire_for(std::chrono::seconds(10)));
        isLookedUp = false;
        return EAI_AGAIN;
    }
    static const auto real =
        reinterpret_cast<decltype(&getaddrinfo)>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(node, service, hints, result);
}

namespace vorq::gateway::testing {
namespace {

using ::testing::HasSubstr;

TEST(HangingLookupTest, KeepsNeitherTheFailureNorTheEndOfTheGatewayWaiting) {
    setenv("no_proxy", kHangingName, 1);
    {
        ProviderConfig config = configFor(std::string("http://") + kHangingName);
        config.connectTimeout = std::chrono::milliseconds(300);
        TestGateway gateway(std::make_unique<ProviderEngine>(config));
        gateway.signIn();
        const Answer answer = gateway.post("/ai/prompt", {{"prompt", "hello"}});
        EXPECT_THAT(answer.body.value("error", ""), HasSubstr(kHangingName));
        EXPECT_TRUE(isLookedUp) << "the look-up ended before the answer came";
    }
    EXPECT_TRUE(isLookedUp) << "the look-up ended before the gateway did";
    unsetenv("no_proxy");
    lookupMayEnd.release();
    for (int i = 0; i < 100 && isLookedUp; ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(isLookedUp);
}

} // namespace
} // namespace vorq::gateway::testing
