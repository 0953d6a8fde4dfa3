#include "areas/Permissions.h"
#include "platform/testing/ScriptedPermissionProbe.h"
#include "platform/trust/PrivacySettings.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <functional>

namespace vorq {
namespace {

using namespace Qt::StringLiterals;

const QString lookFor =
    u"If Vorq already looks enabled in System Settings, select it, click − to remove, then Enable "
    "again here. Quit Vorq (⌘Q) and reopen so the new grant applies to: /bin/vorq"_s;

class OpenedPane final : public PrivacySettings {
  public:
    QStringList opened;
    std::function<void()> onOpen;

    void openPrivacyPane(const QString& anchor) override {
        opened += anchor;
        if (onOpen) onOpen();
    }
    QCoro::Task<QStringList> programsToRestart(std::stop_token) override {
        co_return QStringList();
    }
};

class PermissionsTest : public testing::Test {
  protected:
    PermissionsTest() {
        m_permissions.setProbe(&m_probe);
        m_permissions.setPrivacySettings(&m_pane);
    }

    ScriptedPermissionProbe m_probe;
    OpenedPane m_pane;
    Permissions m_permissions;
};

TEST_F(PermissionsTest, ARequestOpensOnePaneAndSaysWhatToLookFor) {
    m_permissions.requestTextCapturePermission();
    EXPECT_EQ(m_pane.opened, QStringList(u"Privacy_Accessibility"_s));
    EXPECT_EQ(m_permissions.permissionMessage(), lookFor);
    EXPECT_EQ(m_permissions.textCaptureRaw(), u"pending");
}

TEST_F(PermissionsTest, ARequestThatIsGrantedAtOnceSaysNothing) {
    m_permissions.setPermissionMessage(u"before"_s);
    m_pane.onOpen = [this] { m_probe.text = PermissionState::Granted; };
    m_permissions.requestTextCapturePermission();
    EXPECT_EQ(m_permissions.permissionMessage(), QString());
    EXPECT_EQ(m_permissions.textCaptureRaw(), u"granted");
}

TEST_F(PermissionsTest, WithoutSettingsARequestOnlySaysWhatToLookFor) {
    m_permissions.setPrivacySettings(nullptr);
    m_permissions.requestTextCapturePermission();
    EXPECT_EQ(m_permissions.permissionMessage(), lookFor);
}

TEST_F(PermissionsTest, WhereNoTextAndNoTrustIsFoundTheWalkthroughShows) {
    const QSignalSpy advised(&m_permissions, &Permissions::advised);
    m_permissions.adviseToGrantAgain();
    EXPECT_TRUE(m_permissions.showAccessibilityWalkthrough());
    EXPECT_EQ(m_permissions.permissionMessage(), lookFor);
    EXPECT_EQ(advised.count(), 1);
}

TEST_F(PermissionsTest, DeniedItDoesNotComeByItselfAgain) {
    m_permissions.adviseToGrantAgain();
    m_permissions.denyAccessibilityWalkthrough();
    EXPECT_FALSE(m_permissions.showAccessibilityWalkthrough());
    m_permissions.adviseToGrantAgain();
    EXPECT_FALSE(m_permissions.showAccessibilityWalkthrough());
    EXPECT_EQ(m_permissions.permissionMessage(), lookFor);
}

TEST_F(PermissionsTest, DeniedItStillComesWhereTheUserAsksForIt) {
    m_permissions.denyAccessibilityWalkthrough();
    m_permissions.openAccessibilityWalkthrough();
    EXPECT_TRUE(m_permissions.showAccessibilityWalkthrough());
}

} // namespace
} // namespace vorq
