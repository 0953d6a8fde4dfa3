#include "platform/linux/LinuxDesktopPlatform.h"

#include "platform/Compositor.h"
#include "platform/GlobalHotKeys.h"
#include "platform/OverlayHints.h"
#include "platform/PressMonitor.h"
#include "platform/PrimarySelection.h"
#include "platform/Workspace.h"
#include "platform/copying/KeyPoster.h"
#include "platform/copying/Pasteboard.h"
#include "platform/pixels/ScreenCapture.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::EndsWith;

TEST(LinuxDesktopPlatformTest, WithoutASessionThePortsOfWindowsSayWhyTheyDoNothing) {
    LinuxDesktopPlatform platform(SessionKind::None);
    const std::vector<std::pair<const char*, PortSupport>> ports{
        {"workspace", platform.workspace().supported()},
        {"compositor", platform.compositor().supported()},
        {"overlay hints", platform.overlayHints().supported()},
        {"presses", platform.presses().supported()},
        {"hot keys", platform.hotKeys().supported()},
        {"primary selection", platform.primarySelection().supported()},
        {"screen capture", platform.screenCapture().supported()},
        {"pasteboard", platform.pasteboard().supported()},
        {"key poster", platform.keyPoster().supported()}};
    for (const auto& [name, support] : ports) {
        ASSERT_FALSE(support) << name;
        EXPECT_THAT(support.error().toStdString(), EndsWith(".")) << name;
    }
}

TEST(LinuxDesktopPlatformTest, WithoutASessionNothingIsInFrontAndNoKeyIsToBeHad) {
    LinuxDesktopPlatform platform(SessionKind::None);
    EXPECT_FALSE(platform.workspace().frontmostProcess());
    EXPECT_FALSE(platform.workspace().activeWindow());
    EXPECT_FALSE(platform.hotKeys().installEventHandler());
    EXPECT_FALSE(platform.primarySelection().highlightOf(1, {}));
    EXPECT_EQ(platform.compositor().translucency(), Translucency::Plain);
}

TEST(LinuxDesktopPlatformTest, TakesNoPicturesUnderWaylandAndSaysWhy) {
    LinuxDesktopPlatform platform(SessionKind::Wayland);
    const PortSupport support = platform.screenCapture().supported();
    ASSERT_FALSE(support);
    EXPECT_EQ(support.error(), "Wayland shows no program the windows of another.");
    EXPECT_FALSE(platform.screenCapture().windowsOnScreen({}));
    EXPECT_FALSE(platform.screenCapture().pictureOf(1, {}));
}

TEST(LinuxDesktopPlatformTest, PressesNoKeysUnderWaylandAndSaysWhy) {
    LinuxDesktopPlatform platform(SessionKind::Wayland);
    const PortSupport keys = platform.keyPoster().supported();
    ASSERT_FALSE(keys);
    EXPECT_EQ(keys.error(), "Wayland lets no program press keys in another.");
    EXPECT_FALSE(platform.keyPoster().post({.key = KeyChord::Key::C}, 1));
    EXPECT_FALSE(platform.pasteboard().supported());
}

TEST(LinuxDesktopPlatformTest, MakesEachPortOnce) {
    LinuxDesktopPlatform platform(SessionKind::None);
    EXPECT_EQ(&platform.workspace(), &platform.workspace());
    EXPECT_EQ(&platform.clock(), &platform.clock());
    EXPECT_EQ(&platform.compositor(), &platform.compositor());
}

} // namespace
} // namespace vorq
