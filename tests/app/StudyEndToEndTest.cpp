// A note is studied against a real backend: the whole state in this process, the backend in one of
// its own, real sockets and files.

#include "backend/http/CurlTransport.h"
#include "capture/selection/SelectionCapture.h"
#include "core/VorqAppState.h"
#include "library/store/LibraryStore.h"
#include "platform/NotesBridge.h"
#include "platform/linux/desktop/SystemClock.h"
#include "platform/portable/SettingsFile.h"
#include "platform/testing/ScriptedAppPaths.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <gmock/gmock.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::SizeIs;

constexpr int patience = 60'000; // milliseconds, for a machine that is busy

const QString material =
    u"A river carries silt from the mountains to the sea. When it leaves its banks it slows down, "
    "and the silt settles on the fields. Farmers along the Nile needed no manure, because the silt "
    "renewed the soil each year. On flat land a river wanders in bends. At the sea it drops the "
    "rest of its load and builds a delta."_s;

// Turns the event loop until it is so.
bool happens(const std::function<bool()>& isSo) {
    QElapsedTimer waited;
    for (waited.start(); !isSo() && waited.elapsed() < patience;)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    return isSo();
}

class StudyEndToEndTest : public testing::Test {
  protected:
    StudyEndToEndTest() {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", m_paths.home());
        environment.insert("XDG_DATA_HOME", m_paths.applicationSupportFolder());
        for (const char* name : {"VORQ_PROVIDER_URL", "VORQ_PROVIDER_KEY"})
            environment.remove(name);
        m_gateway.setProcessEnvironment(environment);
        m_handoff.setProcessEnvironment(environment);
    }

    ~StudyEndToEndTest() override {
        m_gateway.terminate();
        m_gateway.waitForFinished(patience);
        qunsetenv("VORQ_API_BASE_URL");
    }

    void startGateway() {
        m_gateway.start(VORQ_GATEWAY_PROGRAM, {"serve", "--port", "0"});
        QByteArray line;
        while (!line.contains('\n') && m_gateway.waitForReadyRead(patience))
            line += m_gateway.readAllStandardOutput();
        const QByteArray url = line.trimmed().split(' ').last();
        ASSERT_TRUE(url.startsWith("http://127.0.0.1:")) << line.toStdString();
        qputenv("VORQ_API_BASE_URL", url);
    }

    void signIn() {
        m_handoff.start(VORQ_GATEWAY_PROGRAM, {"handoff"});
        ASSERT_TRUE(m_handoff.waitForFinished(patience));
        const QByteArray url = m_handoff.readAllStandardOutput().trimmed();
        m_state->signIn().activateFromMacHandoff(QString::fromUtf8(url.split('=').last()));
        ASSERT_TRUE(happens([this] { return m_state->account().signedIn(); }));
    }

    void launch() {
        m_state = std::make_unique<VorqAppState>(
            VorqAppState::Platform{m_clock, m_defaults, m_paths, m_transport, m_capture, m_notes});
    }

    // Sends a prompt and gives what is said to it.
    QString said(const QString& prompt) {
        m_state->panel().submit(prompt);
        EXPECT_TRUE(happens([this] { return !m_state->panel().isPanelTurnInFlight(); }));
        const VorqMessage& last = m_state->panel().messages().messages().back();
        return last.role == MessageRole::Assistant ? last.text : QString();
    }

    [[nodiscard]] std::vector<SavedNote> notes() const {
        return LibraryStore(m_paths.applicationSupportFolder()).loadNotes();
    }

    ScriptedAppPaths m_paths;
    SystemClock m_clock;
    SettingsFile m_defaults{m_paths.settingsFolder() + "/settings.json"};
    CurlTransport m_transport{m_clock};
    NoSelectionCapture m_capture;
    NoNotesBridge m_notes;
    QProcess m_gateway;
    QProcess m_handoff;
    std::unique_ptr<VorqAppState> m_state;
};

TEST_F(StudyEndToEndTest, ANoteIsLoadedAskedAboutEnrichedAndMadeIntoFlashcards) {
    startGateway();
    launch();
    signIn();
    const QUuid id = m_state->library().createBlankNote(material, HubArea::Study);

    EXPECT_EQ(said("open notes"), "");
    EXPECT_EQ(m_state->study().activeStudyNoteID(), id);

    const QString answer = said("Why did farmers need no manure?");
    EXPECT_TRUE(answer.contains("Farmers along the Nile needed no manure")) << qPrintable(answer);
    EXPECT_EQ(m_state->study().lastStudyResearch(), answer);

    EXPECT_EQ(said("save research"), "Saved — original note plus the update.");
    ASSERT_THAT(notes(), SizeIs(1));
    const SavedNote enriched = notes().front();
    EXPECT_TRUE(enriched.thoughts.startsWith(material));
    EXPECT_GT(enriched.thoughts.size(), material.size() + 20);
    EXPECT_TRUE(enriched.thoughtsRTF.has_value());

    const QString announced = said("make flashcards");
    const auto cards = static_cast<qsizetype>(notes().front().flashcards.size());
    EXPECT_GT(cards, 0) << qPrintable(announced);
    EXPECT_TRUE(announced.startsWith(u"Here are %1 flashcards — saved on your note."_s.arg(cards)))
        << qPrintable(announced);
    EXPECT_EQ(said("save chat"), "Saved to History.");

    m_state.reset();
    launch();
    EXPECT_EQ(m_state->library().savedNotes().records().front().flashcards,
              notes().front().flashcards);
    EXPECT_THAT(m_state->library().savedChats().records(), SizeIs(1));
}

TEST_F(StudyEndToEndTest, FlashcardsAloneAreNothingToSaveAndAReplyIsAddedToTheirNote) {
    startGateway();
    launch();
    signIn();
    m_state->library().createBlankNote(material, HubArea::Study);
    const QString body = notes().front().thoughts;

    EXPECT_TRUE(said("make flashcards").startsWith("Here are "));
    EXPECT_EQ(said("save notes"),
              "Nothing to save yet — ask me to research or explain the note first.");
    EXPECT_EQ(notes().front().thoughts, body);

    EXPECT_NE(said("Why did farmers need no manure?"), "");
    EXPECT_EQ(said("save notes"), "Saved — original note plus the update.");
    EXPECT_TRUE(notes().front().thoughts.startsWith(material));
    EXPECT_GT(notes().front().thoughts.size(), material.size() + 20);
    EXPECT_GT(notes().front().flashcards.size(), 0U);
}

TEST_F(StudyEndToEndTest, ABackendThatIsGoneIsSaidInPlaceOfTheCards) {
    startGateway();
    launch();
    signIn();
    m_state->library().createBlankNote(material, HubArea::Study);
    m_gateway.terminate();
    m_gateway.waitForFinished(patience);
    EXPECT_TRUE(said("make flashcards").startsWith("Could not reach Vorq at http://127.0.0.1:"));
    EXPECT_THAT(notes().front().flashcards, SizeIs(0));
}

} // namespace
} // namespace vorq
