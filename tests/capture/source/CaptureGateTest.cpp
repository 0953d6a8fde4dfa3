#include "doubles/capture/CaptureFixture.h"

namespace vorq {
namespace {

class CaptureGateTest : public CaptureTest {};

TEST_F(CaptureGateTest, ItsOwnProcessIsNotForeign) {
    workspace.bringToFront(static_cast<std::int32_t>(QCoreApplication::applicationPid()));
    EXPECT_EQ(captures->gate.frontmostForeignProcess(), std::nullopt);

    workspace.bringToFront(source);
    EXPECT_EQ(captures->gate.frontmostForeignProcess(), source);
}

TEST_F(CaptureGateTest, ApplicationsAreNamedByTheWorkspace) {
    EXPECT_EQ(captures->gate.applicationName(source), "Source");
    EXPECT_EQ(captures->gate.applicationName(source + 1), "");
}

TEST_F(CaptureGateTest, AnUnknownProcessHasNoIdentifier) {
    EXPECT_EQ(captures->gate.identifierOf(source), "org.xfce.mousepad");
    EXPECT_EQ(captures->gate.identifierOf(std::nullopt), "");
    EXPECT_EQ(captures->gate.identifierOf(source + 1), "");
}

TEST_F(CaptureGateTest, WithoutASourceGoesByTheApplicationInFront) {
    EXPECT_EQ(captures->gate.identifierOfSource(std::nullopt), "org.xfce.mousepad");
    EXPECT_EQ(captures->gate.identifierOfSource(source + 1), "");
}

} // namespace
} // namespace vorq
