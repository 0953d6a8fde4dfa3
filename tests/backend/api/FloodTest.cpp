#include "backend/api/VorqAPIService.h"
#include "backend/http/CurlTransport.h"
#include "doubles/backend/Awaiting.h"
#include "doubles/backend/FloodServer.h"
#include "platform/linux/desktop/SystemClock.h"

#include <QFile>

#include <gtest/gtest.h>

#include <algorithm>
#include <unistd.h>

namespace vorq {
namespace {

using namespace std::chrono_literals;

#if __has_feature(address_sanitizer)
constexpr bool memoryIsOurs = false; // the sanitizer keeps freed memory
constexpr qint64 flood = qint64{128} << 20;
#else
constexpr bool memoryIsOurs = true;
constexpr qint64 flood = qint64{1} << 30;
#endif

qint64 residentBytes() {
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly)) return 0;
    return file.readAll().split(' ').at(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

TEST(Flood, ReadingSlowsWithTheMainThreadAndMemoryStaysSmall) {
    FloodServer server(flood);
    SystemClock clock;
    CurlTransport transport(clock);
    VorqAPIService service(transport, [&server] { return server.url(); });
    qint64 events = 0;
    qint64 furthestAhead = 0;
    qint64 peak = 0;
    const Outcome outcome(service.streamAnalysis(
        "/ai/prompt", "{}", {}, 30s,
        [&](const QString&) {
            ++events;
            furthestAhead = std::max(furthestAhead, server.sent() - events * server.eventSize());
            if (events % 256 != 0) return;
            peak = std::max(peak, residentBytes());
            // A main thread with much else to do at first.
            if (events < 5000) std::this_thread::sleep_for(20ms);
        },
        {}));
    ASSERT_TRUE(outcome.wait(100s));
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_GE(events * server.eventSize(), flood) << "every event is delivered";
    EXPECT_LT(furthestAhead, 24 << 20) << "no more than the system's own buffers";
    RecordProperty("peakResidentMegabytes", static_cast<int>(peak >> 20));
    RecordProperty("furthestAheadKilobytes", static_cast<int>(furthestAhead >> 10));
    if (memoryIsOurs) EXPECT_LT(peak, 80 << 20);
}

TEST(Flood, ABodyThatNobodyReadsStaysWithTheSystem) {
    FloodServer server(flood);
    SystemClock clock;
    CurlTransport transport(clock);
    const Outcome outcome(transport.open(
        {.url = server.url(), .method = "GET", .headers = {}, .body = {}, .timeout = 30s}, {}));
    ASSERT_TRUE(outcome.wait());
    EXPECT_FALSE(turnUntil([&] { return server.sent() > (24 << 20); }, 500ms));
}

TEST(Flood, AReadGivesABoundedPiece) {
    FloodServer server(qint64{8} << 20);
    SystemClock clock;
    CurlTransport transport(clock);
    const Outcome outcome(transport.open(
        {.url = server.url(), .method = "GET", .headers = {}, .body = {}, .timeout = 30s}, {}));
    ASSERT_TRUE(outcome.wait());
    // Until the buffers are full.
    turnUntil([] { return false; }, 200ms);
    qint64 bytes = 0;
    for (qint64 last = 1; last > 0; bytes += last) {
        const Outcome read(outcome.value()->read({}));
        ASSERT_TRUE(read.wait());
        ASSERT_TRUE(read.succeeded());
        last = read.value().size();
        EXPECT_LE(last, 64 << 10);
    }
    EXPECT_EQ(bytes, server.sent());
}

TEST(Flood, HeadersAndTrailersWithoutAnEndEndTheResponse) {
    for (const auto kind : {FloodServer::Kind::Headers, FloodServer::Kind::Trailers}) {
        FloodServer server(qint64{256} << 20, kind);
        SystemClock clock;
        CurlTransport transport(clock);
        VorqAPIService service(transport, [&server] { return server.url(); });
        const qint64 before = residentBytes();
        const Outcome outcome(service.streamAnalysis("/ai/prompt", "{}", {}, 30s, {}, {}));
        ASSERT_TRUE(outcome.wait());
        EXPECT_FALSE(outcome.succeeded());
        EXPECT_LT(server.sent(), 32 << 20) << "no more than the system's own buffers";
        if (memoryIsOurs) EXPECT_LT(residentBytes() - before, 32 << 20);
    }
}

TEST(Flood, AStopEndsItAtOnce) {
    FloodServer server(flood);
    SystemClock clock;
    CurlTransport transport(clock);
    VorqAPIService service(transport, [&server] { return server.url(); });
    std::stop_source stop;
    int events = 0;
    const Outcome outcome(service.streamAnalysis(
        "/ai/prompt", "{}", {}, 30s,
        [&](const QString&) {
            if (++events == 100) stop.request_stop();
        },
        stop.get_token()));
    ASSERT_TRUE(outcome.wait());
    EXPECT_TRUE(outcome.cancelled());
    EXPECT_EQ(events, 100);
}

TEST(Flood, OtherWorkOfTheMainThreadGoesOnMeanwhile) {
    FloodServer server(qint64{64} << 20);
    SystemClock clock;
    CurlTransport transport(clock);
    VorqAPIService service(transport, [&server] { return server.url(); });
    int ticks = 0;
    std::function<void()> tick = [&] {
        ++ticks;
        clock.after(1ms, tick);
    };
    tick();
    const Outcome outcome(service.streamAnalysis("/ai/prompt", "{}", {}, 30s, {}, {}));
    ASSERT_TRUE(outcome.wait());
    EXPECT_TRUE(outcome.succeeded());
    EXPECT_GT(ticks, 5);
}

} // namespace
} // namespace vorq
