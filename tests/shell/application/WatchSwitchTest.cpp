// The watch as its preview is switched, and what the status item says of it.

#include "shell/application/WatchSwitch.h"
#include "areas/Previews.h"
#include "capture/selection/CaptureLog.h"
#include "capture/selection/SelectionReader.h"
#include "capture/source/CaptureGate.h"
#include "capture/watch/FrontmostWatchService.h"
#include "doubles/shell/ShellFixture.h"
#include "platform/testing/ScriptedAccessibility.h"
#include "platform/testing/ScriptedFrameStream.h"
#include "platform/testing/ScriptedPrimarySelection.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class WatchSwitchTest : public testing::Test {
  protected:
    WatchSwitchTest() {
        m_workspace.launch({.process = 7, .identifier = "editor", .name = "Pens & Co"});
        m_workspace.bringToFront(7);
        m_accessibility.focusedName = "field";
        m_accessibility.element("field").text = "geheim";
    }
    [[nodiscard]] QByteArray log() const {
        QFile file(m_folder.filePath("capture-debug.log"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_folder;
    CallList m_calls;
    ScriptedStatusItem m_item{m_calls};
    ManualClock m_clock;
    ScriptedDefaults m_defaults;
    ScriptedWorkspace m_workspace;
    ScriptedAccessibility m_accessibility;
    ScriptedPrimarySelection m_primary;
    ScriptedFrameStream m_stream;
    CaptureLog m_log{m_clock, m_folder.filePath("capture-debug.log"), {}};
    CaptureGate m_gate{m_accessibility, m_workspace, m_defaults};
    SelectionReader m_reader{{m_clock, m_accessibility, m_primary, m_gate}};
    Previews m_previews{m_defaults};
    FrontmostWatchService m_watch{{m_clock, m_workspace, m_stream, m_reader, m_gate, 1}};
};

TEST_F(WatchSwitchTest, FollowsThePreviewAndTheItemTellsOfIt) {
    const WatchSwitch watchSwitch({m_previews, m_watch, m_item, m_log});
    EXPECT_FALSE(m_watch.isWatching());
    EXPECT_EQ(m_item.watchStatus, "");
    EXPECT_TRUE(m_previews.set(Preview::Watch, true));
    EXPECT_TRUE(m_watch.isWatching());
    EXPECT_EQ(m_item.watchStatus, "Watching Pens & Co");
    m_workspace.launch({.process = 1, .identifier = "com.vorq.desk", .name = "Vorq"});
    m_workspace.bringToFront(1);
    EXPECT_EQ(m_item.watchStatus, "Watch: paused while Vorq is in front");
    EXPECT_TRUE(m_previews.set(Preview::Hub, true));
    EXPECT_TRUE(m_watch.isWatching());
    EXPECT_TRUE(m_previews.set(Preview::Watch, false));
    EXPECT_FALSE(m_watch.isWatching());
    EXPECT_EQ(m_item.watchStatus, "");
}

TEST_F(WatchSwitchTest, OneThatIsOpenAtTheStartWatchesFromThenOn) {
    m_previews.openForThisRun(Preview::Watch);
    const WatchSwitch watchSwitch({m_previews, m_watch, m_item, m_log});
    EXPECT_EQ(m_item.watchStatus, "Watching Pens & Co");
}

TEST_F(WatchSwitchTest, TheItemSaysWhyThereIsNothingToWatch) {
    m_stream.support = std::unexpected(u"No window is shown."_s);
    const WatchSwitch watchSwitch({m_previews, m_watch, m_item, m_log});
    EXPECT_EQ(m_item.watchStatus, "");
    EXPECT_TRUE(m_previews.set(Preview::Watch, true));
    EXPECT_EQ(m_item.watchStatus, "No window is shown.");
    EXPECT_TRUE(m_previews.set(Preview::Watch, false));
    EXPECT_EQ(m_item.watchStatus, "");
}

TEST_F(WatchSwitchTest, TheLogLearnsThatSomethingWasSampledAndNeverWhat) {
    m_previews.openForThisRun(Preview::Watch);
    const WatchSwitch watchSwitch({m_previews, m_watch, m_item, m_log});
    EXPECT_TRUE(QTest::qWaitFor(
        [this] {
            m_clock.advance(Clock::Duration::zero());
            return !log().isEmpty();
        },
        20'000));
    EXPECT_EQ(log().trimmed(), "2026-01-01T00:00:00Z watch: pid=7 selection=6 title=0");
}

} // namespace
} // namespace vorq
