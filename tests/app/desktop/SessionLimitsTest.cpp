#include "app/desktop/SessionLimits.h"
#include "platform/linux/LinuxDesktopPlatform.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using testing::Contains;
using testing::IsSupersetOf;

std::vector<std::string> limitsOf(SessionKind session) {
    qputenv("DISPLAY", ""); // no server of the desktop that the test runs on
    LinuxDesktopPlatform platform(session);
    std::vector<std::string> reasons;
    for (const QString& reason : sessionLimits(platform))
        reasons.push_back(reason.toStdString());
    return reasons;
}

TEST(SessionLimits, AreTheReasonsOfThePortsThatWaylandHasNot) {
    EXPECT_THAT(limitsOf(SessionKind::Wayland),
                IsSupersetOf({"Wayland shows no program the windows of another.",
                              "Wayland lets no program press keys in another.",
                              "Wayland lets a program read the clipboard only while it has the "
                              "keyboard."}));
}

// Several ports have the same reason there.
TEST(SessionLimits, TellEachReasonOnce) {
    const std::vector<std::string> reasons = limitsOf(SessionKind::X11);
    EXPECT_THAT(reasons, Contains("No X server answers.").Times(1));
}

TEST(SessionLimits, AreToldWithoutADesktopAsWell) {
    EXPECT_THAT(limitsOf(SessionKind::None), Contains("There is no desktop that shows windows."));
}

} // namespace
} // namespace vorq
