// The kept chats and the models in the menu of the built program, whose user is signed in.

#include "doubles/backend/ScriptedHttpServer.h"
#include "doubles/desktop/MenuProgram.h"
#include "doubles/desktop/PanelProgram.h"
#include "doubles/desktop/RecordingRelay.h"
#include "library/store/LibraryStore.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

#include <gmock/gmock.h>

namespace vorq::desktop {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class MenuChoicesTest : public MenuProgramTest {
  protected:
    void SetUp() override {
        m_relay.emplace(startGateway(m_session));
        signIn(m_session, m_relay->url());
    }

    [[nodiscard]] QJsonObject settings() const {
        QFile file(m_session.home() + "/.config/Vorq/settings.json");
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QJsonDocument::fromJson(file.readAll()).object();
    }

    DesktopProgram& startSignedIn(const QString& appearance = "system") {
        QJsonObject all = settings();
        all["vorqAppAppearance"] = appearance;
        all["vorq.migratedPanelChatsToHub.v1"] = true; // chats stay chats of the panel
        QProcessEnvironment environment;
        environment.insert("VORQ_API_BASE_URL", m_relay->url());
        m_running = &startInTray(QJsonDocument(all).toJson(), environment);
        return *m_running;
    }

    // The later in the list, the older.
    void keepChats(const QStringList& titles) const {
        std::vector<SavedChat> chats;
        Date date = *dateFromIso("2026-03-01T10:20:30Z");
        for (const QString& title : titles) {
            const SavedChatMessage question{QUuid::createUuid(), "user", "about " + title};
            chats.push_back({QUuid::createUuid(), title, date, {question}});
            date -= std::chrono::hours(24);
        }
        LibraryStore(m_session.home() + "/.local/share").save(chats);
    }

    void openSubmenu(const QString& title, const QString& firstEntry) {
        openMenu();
        chooseSubmenu(title, firstEntry);
    }

    [[nodiscard]] QStringList names() const {
        QStringList names;
        for (const AccessibleNode& node : menu())
            names += node.name;
        return names;
    }
    [[nodiscard]] QStringList checked() const {
        QStringList names;
        for (const AccessibleNode& node : menu())
            if (node.isChecked) names += node.name.section('\t', 0, 0);
        return names;
    }

    void ask(const QString& question) {
        openMenu();
        choose("Toggle Vorq");
        DesktopSession::waitUntil("the panel with the keyboard", [this] {
            return m_session.processOf(m_session.activeWindow()) == m_running->process() &&
                   shows("Vorq: Hello 👋, Vorq here…");
        });
        m_session.type(question);
        m_session.key({"Return"});
    }

    std::optional<RecordingRelay> m_relay;
    DesktopProgram* m_running = nullptr;
};

TEST_F(MenuChoicesTest, WithoutAKeptChatTheHistorySaysSo) {
    startSignedIn();
    openSubmenu("History", "No saved chats");
    EXPECT_FALSE(entry("No saved chats")->isEnabled);
}

TEST_F(MenuChoicesTest, AChatThatIsChosenOpensInThePanel) {
    keepChats({"Pens and ink", "Sails"});
    startSignedIn();
    openSubmenu("History", "Pens and ink");
    ASSERT_THAT(names(), SizeIs(2));
    const QRegularExpression when("^Pens and ink\t.*(Mar|3).*26");
    EXPECT_TRUE(when.match(names().front()).hasMatch()) << names().front().toStdString();
    (void)keep("menu-history");
    choose("Sails");
    DesktopSession::waitUntil("the chat", [this] { return shows("You: about Sails"); });
    EXPECT_FALSE(shows("You: about Pens and ink"));
}

TEST_F(MenuChoicesTest, AModelThatIsChosenIsCheckedAndGoesWithTheNextQuestion) {
    startSignedIn();
    openSubmenu("Model", "Auto");
    EXPECT_THAT(checked(), ElementsAre("Auto"));
    choose("Gemini Flash");
    openSubmenu("Model", "Auto");
    EXPECT_THAT(checked(), ElementsAre("Gemini Flash"));
    (void)keep("menu-model");
    m_session.key({"Escape"});
    closeMenu();
    ask("Why is the sky blue?");
    DesktopSession::waitUntil("the question to be sent",
                              [this] { return !m_relay->requests("/ai/prompt").empty(); });
    EXPECT_EQ(m_relay->requests("/ai/prompt").front().value("preferredModel"),
              "google/gemini-flash-latest");
    EXPECT_EQ(m_relay->requests("/auth/profile").front().value("preferredModel"),
              "google/gemini-flash-latest");
}

// The backend forwards to a provider on this computer, which has two models.
class OfferedModelsTest : public MenuChoicesTest {
  protected:
    void SetUp() override {
        m_provider.onRequest([this](std::size_t connection) { serve(connection); });
        const QJsonObject provider{{"url", m_provider.url()}, {"model", "llama3.1"}};
        m_session.write(".config/Vorq/gateway.json",
                        QJsonDocument(QJsonObject{{"provider", provider}}).toJson());
        MenuChoicesTest::SetUp();
    }

    void serve(std::size_t connection) {
        const QByteArray request = m_provider.received(connection);
        if (request.startsWith("GET /v1/models "))
            m_provider.send(connection, ScriptedHttpServer::response(
                                            200, R"({"data":[{"id":"llama3.1"},{"id":"R&D"}]})"));
        else
            answer(connection, QJsonDocument::fromJson(request.sliced(request.indexOf('{')))
                                   .object()
                                   .value("model")
                                   .toString());
        m_provider.close(connection);
    }

    void answer(std::size_t connection, const QString& model) {
        const QJsonObject delta{{"content", "This is " + model + "."}};
        const QJsonObject event{{"choices", QJsonArray{QJsonObject{{"delta", delta}}}}};
        const QByteArray body =
            "data: " + QJsonDocument(event).toJson(QJsonDocument::Compact) + "\n\ndata: [DONE]\n\n";
        m_provider.send(connection, ScriptedHttpServer::response(
                                        200, body, "Content-Type: text/event-stream\r\n"));
    }

    ScriptedHttpServer m_provider;
};

TEST_F(OfferedModelsTest, StandBelowTheOthersAndAnswerWhenChosen) {
    startSignedIn();
    openSubmenu("Model", "Auto");
    DesktopSession::waitUntil("the models of the provider",
                              [this] { return names().contains("R&D\t"); });
    EXPECT_THAT(names().last(2), ElementsAre("llama3.1\t", "R&D\t"));
    (void)keep("menu-offered-models");
    choose("R&D");
    openSubmenu("Model", "Auto");
    EXPECT_THAT(checked(), ElementsAre("R&D"));
    m_session.key({"Escape"});
    closeMenu();
    ask("Who answers?");
    DesktopSession::waitUntil("the answer of that model",
                              [this] { return shows("Vorq: This is R&D."); });
}

TEST_F(MenuChoicesTest, EverySubmenuCanBeReadInBothThemes) {
    keepChats(
        {"Pens and ink", "Why sails pull", "What the river carries to the sea, and what stays"});
    for (const QString appearance : {"light", "dark"}) {
        startSignedIn(appearance);
        const std::vector<std::pair<QString, QString>> submenus{
            {"History", "Pens and ink"}, {"Model", "Auto"}, {"Customize Vorq", "Theme"}};
        for (const auto& [title, first] : submenus) {
            openSubmenu(title, first);
            const ScreenPicture shown =
                keep("menu-" + title.section(' ', 0, 0).toLower() + "-" + appearance);
            for (const AccessibleNode& node : menu()) {
                const bool isPlain = !node.name.isEmpty() && node.isEnabled && !node.isFocused;
                if (!isPlain) continue; // a separator, a fact, or where the pointer is
                const QRect place = placeOf(node.name);
                EXPECT_EQ(isDark(shown.ground(place)), appearance == "dark")
                    << node.name.toStdString();
                EXPECT_GE(shown.contrast(place), 4.5) << node.name.toStdString();
            }
            m_session.key({"Escape"});
            closeMenu();
        }
        m_running->kill();
    }
}

} // namespace
} // namespace vorq::desktop
