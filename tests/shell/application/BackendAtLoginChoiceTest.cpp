// The local backend at login, as the menu shows it and the user chooses it.

#include "shell/application/BackendAtLoginChoice.h"
#include "doubles/shell/ShellFixture.h"
#include "platform/testing/ScriptedBackendAtLogin.h"

#include <QTest>

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BackendAtLoginChoiceTest : public testing::Test {
  protected:
    void choose(bool isOn) {
        emit m_item.chosen(isOn ? StatusCommand::EnableBackendAtLogin
                                : StatusCommand::DisableBackendAtLogin);
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_item.backend.isOffered; }));
    }

    CallList m_calls;
    ScriptedStatusItem m_item{m_calls};
    std::shared_ptr<ScriptedBackendAtLogin> m_backend = std::make_shared<ScriptedBackendAtLogin>();
    Alert m_told;
    BackendAtLoginChoice::ShowAlert m_tell = [this](const Alert& alert) {
        m_calls += "alert";
        m_told = alert;
    };
    BackendAtLoginChoice m_choice{m_backend, m_item, m_tell};
};

TEST_F(BackendAtLoginChoiceTest, TheMenuShowsHowItIsWheneverItOpens) {
    m_backend->isHere = false;
    emit m_item.menuWillOpen();
    EXPECT_FALSE(m_item.backend.isOffered);
    m_backend->isHere = true;
    m_backend->on = true;
    emit m_item.menuWillOpen();
    EXPECT_EQ(m_item.backend, (BackendAtLoginEntry{.isOffered = true, .isOn = true}));
}

TEST_F(BackendAtLoginChoiceTest, IsSwitchedOnAndOff) {
    choose(true);
    EXPECT_TRUE(m_backend->on);
    EXPECT_TRUE(m_item.backend.isOn);
    m_item.backend = {};
    choose(false);
    EXPECT_FALSE(m_backend->on);
    EXPECT_FALSE(m_item.backend.isOn);
    EXPECT_THAT(m_calls, IsEmpty());
}

TEST_F(BackendAtLoginChoiceTest, AFailureIsToldAndSeen) {
    m_backend->failure = "Could not write the entry.";
    choose(true);
    EXPECT_FALSE(m_item.backend.isOn);
    EXPECT_THAT(m_calls, ElementsAre("alert"));
    EXPECT_EQ(m_told.informativeText, "Could not write the entry.");
}

TEST_F(BackendAtLoginChoiceTest, TheEndWaitsForWhatWasBegun) {
    auto choice = std::make_unique<BackendAtLoginChoice>(m_backend, m_item, m_tell);
    emit m_item.chosen(StatusCommand::EnableBackendAtLogin);
    choice.reset();
    EXPECT_TRUE(m_backend->on);
}

} // namespace
} // namespace vorq
