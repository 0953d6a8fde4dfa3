// What a launch restores, and the fields that store themselves.

#include "backend/api/Session.h"
#include "doubles/panel/ConversationFixture.h"

#include <QFile>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using AppStateTest = ConversationFixture;

TEST_F(AppStateTest, ALaunchWithATokenIsSignedInWithoutAsking) {
    EXPECT_TRUE(state().account().signedIn());
    EXPECT_EQ(state().account().profile().firstName, "");
    EXPECT_EQ(state().account().profile().displayName(), "a@b.c");
    EXPECT_TRUE(state().canUsePanelAI());
    EXPECT_TRUE(state().canChooseAIModel());
    EXPECT_EQ(m_transport.count(), 0u) << "without a refresh token nothing is sent";
}

TEST_F(AppStateTest, ALaunchAsksTheBackendNothingBeforeTheEventLoopTurns) {
    m_defaults.setString("vorq.session.refreshToken", "refresh");
    m_tester.reset();
    m_state = std::make_unique<VorqAppState>(VorqAppState::Platform{
        m_clock, m_defaults, m_paths, m_transport, m_capture, m_notesApplication});
    EXPECT_TRUE(state().account().signedIn());
    EXPECT_EQ(m_transport.count(), 0u);
    m_clock.settle();
    ASSERT_EQ(m_transport.count(), 1u);
    EXPECT_EQ(exchange().path(), "/auth/refresh");
}

TEST_F(AppStateTest, TheProfileImageIsMadeOfItsData) {
    EXPECT_TRUE(state().profileImage().isNull());
    const QString avatar = VorqSessionStore(m_defaults, m_paths).profileImageURL();
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(avatar, "JPEG"));
    restart();
    EXPECT_EQ(state().profileImage().size(), QSize(3, 2));
    const QSignalSpy changed(&state(), &VorqAppState::profileImageChanged);
    state().account().signOut();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_TRUE(state().profileImage().isNull());
}

TEST_F(AppStateTest, AProfileImageThatCannotBeReadIsNone) {
    QFile avatar(VorqSessionStore(m_defaults, m_paths).profileImageURL());
    ASSERT_TRUE(avatar.open(QIODevice::WriteOnly));
    avatar.write("no image");
    avatar.close();
    restart();
    EXPECT_EQ(state().account().profile().image, "no image");
    EXPECT_TRUE(state().profileImage().isNull());
}

TEST_F(AppStateTest, ALaunchWithoutATokenIsSignedOut) {
    m_defaults.remove("vorq.session.token");
    m_defaults.setString("vorq.session.firstName", "Ada");
    restart();
    EXPECT_FALSE(state().account().signedIn());
    EXPECT_EQ(state().account().profile().firstName, "");
    EXPECT_EQ(state().account().profile().email, "");
    EXPECT_EQ(state().account().profile().displayName(), "Account");
}

TEST_F(AppStateTest, AStoredModelThatIsGoneComesBackEmpty) {
    m_defaults.setString("vorq.preferredAIModel", "older/model");
    restart();
    EXPECT_EQ(state().model().preferredAIModelID(), "");
    EXPECT_EQ(m_defaults.string("vorq.preferredAIModel"), "");
}

TEST_F(AppStateTest, TheModelsOfferedToOneUserAreNotShownToTheNext) {
    const QStringList offered = {"llama3.1"};
    m_defaults.apply({{"vorq.offeredModels", offered}});
    restart();
    EXPECT_EQ(state().model().offered().ids(), offered) << "the user is the same as before";
    Session session;
    session.signedIn = true;
    session.token = "t2";
    session.email = "a@b.c";
    session.firstName = "Ada";
    state().account().beginSession(session);
    EXPECT_EQ(state().model().offered().ids(), offered);
    session.email = "grace@example.org";
    state().account().beginSession(session);
    EXPECT_EQ(state().model().offered().ids(), QStringList());
}

TEST_F(AppStateTest, AStoredModelOfTheCatalogueStays) {
    m_defaults.setString("vorq.preferredAIModel", "deepseek/deepseek-chat");
    restart();
    EXPECT_EQ(state().model().preferredAIModelID(), "deepseek/deepseek-chat");
}

TEST_F(AppStateTest, TheOlderBlockColourBecomesBothNewOnes) {
    m_defaults.setString("vorq.panelBlockHex", "#112233");
    restart();
    EXPECT_EQ(state().appearance().panelUserBlockHex(), "#112233");
    EXPECT_EQ(state().appearance().panelAssistantBlockHex(), "#112233");
    EXPECT_EQ(m_defaults.string("vorq.panelUserBlockHex"), "#112233");
    EXPECT_EQ(m_defaults.string("vorq.panelAssistantBlockHex"), "#112233");
    EXPECT_FALSE(m_defaults.contains("vorq.panelBlockHex"));
}

TEST_F(AppStateTest, TheOlderBlockColourIsLeftAloneBesideANewerOne) {
    m_defaults.setString("vorq.panelBlockHex", "#112233");
    m_defaults.setString("vorq.panelUserBlockHex", "#445566");
    restart();
    EXPECT_EQ(state().appearance().panelUserBlockHex(), "#445566");
    EXPECT_EQ(state().appearance().panelAssistantBlockHex(), "");
    EXPECT_EQ(m_defaults.string("vorq.panelBlockHex"), "#112233");
}

TEST_F(AppStateTest, AnEmptyOlderBlockColourStaysAndChangesNothing) {
    m_defaults.setString("vorq.panelBlockHex", "");
    restart();
    EXPECT_EQ(state().appearance().panelUserBlockHex(), "");
    EXPECT_EQ(m_defaults.string("vorq.panelBlockHex"), "");
    EXPECT_FALSE(m_defaults.contains("vorq.panelUserBlockHex"));
}

TEST_F(AppStateTest, AppearanceIsReadAndUnknownValuesFallBack) {
    m_defaults.setString("vorqAppAppearance", "dark");
    m_defaults.setString("vorq.panelAppearance", "purple");
    m_defaults.setString("vorq.panelGlassStyle", "tinted");
    m_defaults.setString("vorq.panelBackgroundHex", "#000000");
    restart();
    EXPECT_EQ(state().appearance().appAppearance(), AppAppearancePreference::Dark);
    EXPECT_EQ(state().appearance().panelAppearance(), PanelAppearance::Current);
    EXPECT_EQ(m_defaults.string("vorq.panelAppearance"), "current");
    EXPECT_EQ(state().appearance().panelGlassStyle(), PanelGlassStyle::Tinted);
    EXPECT_EQ(state().appearance().panelBackgroundHex(), "#000000");
}

TEST_F(AppStateTest, AnUnknownGlassStyleStaysClearAndUnstored) {
    m_defaults.setString("vorq.panelGlassStyle", "frosted");
    restart();
    EXPECT_EQ(state().appearance().panelGlassStyle(), PanelGlassStyle::Clear);
    EXPECT_EQ(m_defaults.string("vorq.panelGlassStyle"), "frosted");
}

TEST_F(AppStateTest, AnUnknownAppAppearanceStaysSystemAndUnstored) {
    m_defaults.setString("vorqAppAppearance", "sepia");
    restart();
    EXPECT_EQ(state().appearance().appAppearance(), AppAppearancePreference::System);
    EXPECT_EQ(m_defaults.string("vorqAppAppearance"), "sepia");
}

TEST_F(AppStateTest, AppearanceStoresItselfOnChange) {
    QSignalSpy applied(&state().appearance(), &AppearanceSettings::appAppearanceApplied);
    state().appearance().setAppAppearance(AppAppearancePreference::Light);
    state().appearance().setPanelAppearance(PanelAppearance::White);
    state().appearance().setPanelUserBlockHex("#abcdef");
    EXPECT_EQ(applied.count(), 1);
    EXPECT_EQ(m_defaults.string("vorqAppAppearance"), "light");
    EXPECT_EQ(m_defaults.string("vorq.panelAppearance"), "white");
    EXPECT_EQ(m_defaults.string("vorq.panelUserBlockHex"), "#abcdef");
    state().appearance().resetCustomPanelColors();
    EXPECT_EQ(m_defaults.string("vorq.panelUserBlockHex"), "");
    EXPECT_EQ(m_defaults.string("vorq.panelBackgroundHex"), "");
}

TEST_F(AppStateTest, ALaunchThatChangesNothingWritesNothing) {
    m_defaults.setString("vorq.preferredAIModel", "deepseek/deepseek-chat");
    m_defaults.setString("vorq.panelGlassStyle", "tinted");
    restart();
    const int before = m_defaults.writes();
    restart();
    EXPECT_EQ(m_defaults.writes(), before);
}

TEST_F(AppStateTest, TheTasksLayoutFallsBackOnTheFirst) {
    EXPECT_EQ(state().hub().hubTasksLayout(), HubTasksLayout::Grid);
    state().hub().setHubTasksLayout(HubTasksLayout::List);
    EXPECT_EQ(m_defaults.string("vorq.hubTasksLayout"), "list");
    restart();
    EXPECT_EQ(state().hub().hubTasksLayout(), HubTasksLayout::List);
    m_defaults.setString("vorq.hubTasksLayout", "spiral");
    restart();
    EXPECT_EQ(state().hub().hubTasksLayout(), HubTasksLayout::Grid);
}

TEST_F(AppStateTest, TheHubBeginsOnItsChats) {
    EXPECT_EQ(state().hub().hubSegmentRaw(), "ai");
    EXPECT_EQ(state().hub().activeHubAIChatID(), std::nullopt);
    EXPECT_FALSE(state().hub().isHubAIWorking());
}

TEST_F(AppStateTest, ThePlaceholderOfTheComposerKnowsAboutTheNote) {
    QSignalSpy changed(&state(), &VorqAppState::promptPlaceholderChanged);
    EXPECT_EQ(state().promptPlaceholder(), u"Ask Vorq for help…"_s);
    state().study().setActiveNote(QUuid::createUuid(), "body");
    EXPECT_EQ(state().promptPlaceholder(), u"Ask about this note…"_s);
    state().study().clearActiveStudyNote();
    EXPECT_EQ(state().promptPlaceholder(), u"Ask Vorq for help…"_s);
    EXPECT_EQ(changed.count(), 2);
}

TEST_F(AppStateTest, AStudyNoteThatIsNoLongerFoundHasNoSource) {
    state().study().setNoteLookup([](const QUuid&) { return std::optional<QString>(); });
    state().study().setActiveNote(QUuid::createUuid(), "body");
    EXPECT_EQ(state().study().activeStudySource(), std::nullopt);
    EXPECT_TRUE(state().study().activeStudyNoteID());
}

} // namespace
} // namespace vorq
