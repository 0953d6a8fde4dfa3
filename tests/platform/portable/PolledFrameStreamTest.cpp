#include "platform/portable/PolledFrameStream.h"
#include "platform/testing/ManualClock.h"
#include "platform/testing/ScriptedScreenCapture.h"

#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int patience = 20'000; // milliseconds

class PolledFrameStreamTest : public testing::Test {
  protected:
    static constexpr ProcessId editor = 7;
    static constexpr WindowId small = 70;
    static constexpr WindowId large = 71;

    PolledFrameStreamTest() {
        capture().windows = {{.window = small, .process = editor, .frame = {0, 0, 10, 10}},
                             {.window = large, .process = editor, .frame = {5, 6, 90, 80}},
                             {.window = 90, .process = 9, .frame = {0, 0, 900, 900}}};
        capture().pictures[small].width = 10;
        capture().pictures[large].width = 90;
        QObject::connect(&m_stream, &FrameStream::frameArrived,
                         [this](const WindowFrame& frame) { m_frames.push_back(frame); });
    }

    [[nodiscard]] ScriptedScreenCapture& capture() { return *m_capture; }
    void waitForFrames(std::size_t count) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_frames.size() >= count; }, patience));
        EXPECT_EQ(m_frames.size(), count);
    }
    // Whatever is under way on the thread comes to its end.
    void turnSomeTimes() {
        for (int turn = 0; turn < 20; ++turn)
            QTest::qWait(1);
    }

    ManualClock m_clock;
    ScriptedScreenCapture* m_capture = new ScriptedScreenCapture; // of the stream
    PolledFrameStream m_stream{m_clock, std::unique_ptr<ScreenCapture>(m_capture)};
    std::vector<WindowFrame> m_frames;
    QSignalSpy m_stops{&m_stream, &FrameStream::stopped};
};

TEST_F(PolledFrameStreamTest, ShowsTheWindowAtOnceAndAgainAfterEachPause) {
    m_stream.start({.process = editor, .window = small});
    waitForFrames(1);
    EXPECT_EQ(m_frames[0].picture.width, 10);
    EXPECT_EQ(m_frames[0].place, QRectF(0, 0, 10, 10));
    m_clock.advance(PolledFrameStream::pause - 1ms);
    turnSomeTimes();
    EXPECT_EQ(m_frames.size(), 1U);
    m_clock.advance(1ms);
    waitForFrames(2);
    EXPECT_THAT(capture().captured, ElementsAre(small, small));
}

TEST_F(PolledFrameStreamTest, WithoutTheWindowItShowsTheLargestOfTheProcess) {
    m_stream.start({.process = editor, .window = 404});
    waitForFrames(1);
    EXPECT_EQ(m_frames[0].picture.width, 90);
    EXPECT_EQ(m_frames[0].place, QRectF(5, 6, 90, 80));
}

TEST_F(PolledFrameStreamTest, NothingComesOnceItIsStopped) {
    capture().hangs = true;
    m_stream.start({.process = editor, .window = small});
    EXPECT_TRUE(QTest::qWaitFor([&] { return capture().hanging > 0; }, patience));
    m_stream.stop();
    EXPECT_TRUE(QTest::qWaitFor([&] { return capture().hanging == 0; }, patience));
    turnSomeTimes();
    m_clock.advance(10 * PolledFrameStream::pause);
    turnSomeTimes();
    EXPECT_THAT(m_frames, IsEmpty());
    EXPECT_EQ(m_stops.count(), 0);
    EXPECT_EQ(m_clock.pendingTimers(), 0U);
}

TEST_F(PolledFrameStreamTest, AnotherWindowTakesThePlaceOfTheOneBefore) {
    m_stream.start({.process = editor, .window = small});
    m_stream.start({.process = editor, .window = large});
    waitForFrames(1);
    EXPECT_EQ(m_frames[0].picture.width, 90);
    m_clock.advance(PolledFrameStream::pause);
    waitForFrames(2);
    EXPECT_EQ(m_frames[1].picture.width, 90);
    EXPECT_EQ(m_stops.count(), 0);
}

TEST_F(PolledFrameStreamTest, SaysThatTheWindowIsGoneAndAsksNoMore) {
    m_stream.start({.process = editor, .window = small});
    waitForFrames(1);
    capture().windows->clear();
    m_clock.advance(PolledFrameStream::pause);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_stops.count() == 1; }, patience));
    EXPECT_EQ(m_stops[0][0].toString(), "The window is not on the screen any more.");
    EXPECT_EQ(m_clock.pendingTimers(), 0U);
}

TEST_F(PolledFrameStreamTest, SaysWhyNoPictureIsTaken) {
    capture().pictures.clear();
    m_stream.start({.process = editor, .window = small});
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_stops.count() == 1; }, patience));
    EXPECT_EQ(m_stops[0][0].toString(), "The window is gone.");
}

TEST_F(PolledFrameStreamTest, IsSupportedWherePicturesAre) {
    EXPECT_TRUE(m_stream.supported());
    capture().support = std::unexpected(u"No pictures here."_s);
    EXPECT_EQ(m_stream.supported().error(), "No pictures here.");
    NoFrameStream none(u"No windows."_s);
    none.start({.process = editor, .window = small});
    EXPECT_EQ(none.supported().error(), "No windows.");
}

} // namespace
} // namespace vorq
