#include "capture/source/FrontmostTracker.h"

#include "platform/testing/ScriptedWorkspace.h"

#include <gtest/gtest.h>

namespace vorq {
namespace {

constexpr ProcessId ours = 1;
constexpr ProcessId editor = 7;

// Where applications may be in front that are not known.
class FrontmostTrackerTest : public testing::Test {
  protected:
    FrontmostTrackerTest() {
        m_workspace.launch({.process = ours, .identifier = "com.vorq.desk", .name = "Vorq"});
        m_workspace.launch({.process = editor, .identifier = "editor", .name = "Editor"});
        m_workspace.forgetSome();
        m_tracker.startFrontmostTracking();
        m_workspace.bringToFront(editor);
    }

    ScriptedWorkspace m_workspace;
    FrontmostTracker m_tracker{m_workspace, {.process = ours, .bundleIdentifier = "com.vorq.desk"}};
};

TEST_F(FrontmostTrackerTest, KnowsTheApplicationBehindVorq) {
    m_workspace.bringToFront(ours);
    EXPECT_EQ(m_tracker.resolveSourcePID(ours), editor);
}

TEST_F(FrontmostTrackerTest, DoesNotGuessAtAnApplicationBehindOneThatIsNotKnown) {
    m_workspace.bringUnknownToFront();
    EXPECT_EQ(m_tracker.resolveSourcePID({}), std::nullopt);
    m_workspace.bringToFront(ours);
    EXPECT_EQ(m_tracker.resolveSourcePID(ours), std::nullopt);
}

TEST_F(FrontmostTrackerTest, NorWhereThatHasNotBeenToldYet) {
    m_workspace.bringNoneToFront();
    EXPECT_EQ(m_tracker.resolveSourcePID({}), std::nullopt);
    m_workspace.bringToFront(ours);
    EXPECT_EQ(m_tracker.resolveSourcePID(ours), std::nullopt);
}

TEST_F(FrontmostTrackerTest, KnowsTheNextOne) {
    m_workspace.bringUnknownToFront();
    m_workspace.bringToFront(editor);
    EXPECT_EQ(m_tracker.resolveSourcePID({}), editor);
}

TEST(FrontmostTrackerWhereAllAreKnown, TakesTheLastOneWhereNoneIsInFront) {
    ScriptedWorkspace workspace;
    workspace.launch({.process = editor, .identifier = "editor", .name = "Editor"});
    FrontmostTracker tracker(workspace, {.process = ours, .bundleIdentifier = "com.vorq.desk"});
    tracker.startFrontmostTracking();
    workspace.bringToFront(editor);
    workspace.bringNoneToFront();
    EXPECT_EQ(tracker.resolveSourcePID({}), editor);
}

} // namespace
} // namespace vorq
