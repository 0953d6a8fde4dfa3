// The built programs together: a real backend process, real sockets, real files.

#include "doubles/app/AskFixture.h"
#include "doubles/backend/SlowRefreshRelay.h"

#include <QCoreApplication>

#include <chrono>
#include <csignal>
#include <memory>
#include <optional>
#include <vector>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const QByteArray material =
    "# Rivers\n\nA river carries silt from the mountains to the sea. When it leaves its banks it "
    "slows down, and the silt settles on the fields. Farmers along the Nile needed no manure, "
    "because the silt renewed the soil each year. On flat land a river wanders in bends. At the "
    "sea it drops the rest of its load and builds a delta.\n";

TEST_F(AskEndToEndTest, AnswersFromThePipedText) {
    startGateway();
    signIn();
    const Outcome outcome = ask({"Why", "did", "farmers", "need", "no", "manure?"}, material);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("> Farmers along the Nile needed no manure"));
    EXPECT_EQ(outcome.err, "");
}

TEST_F(AskEndToEndTest, StreamedSlowlyItPrintsTheSameEachBlockOnce) {
    startGateway();
    signIn();
    const Outcome quick = ask({"Summarise this"}, material);
    stopGateway();
    startGateway(20);
    const Outcome slow = ask({"Summarise this"}, material);
    EXPECT_EQ(slow.status, 0) << slow.err;
    EXPECT_EQ(slow.out, quick.out);
    EXPECT_THAT(slow.out, EndsWith("\n"));
}

TEST_F(AskEndToEndTest, WithoutABackendItSaysWhatToDo) {
    startGateway();
    signIn();
    stopGateway();
    const Outcome outcome = ask({"Summarise this"}, material);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, StartsWith("Could not reach Vorq at http://127.0.0.1:"));
}

TEST_F(AskEndToEndTest, WhoNeverSignedInIsToldHowTo) {
    startGateway();
    const Outcome outcome = ask({"Summarise this"}, material);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, StartsWith("You are not signed in.\n"));
    EXPECT_THAT(outcome.err, HasSubstr("vorq-gateway handoff"));
}

TEST_F(AskEndToEndTest, AWrongTokenEndsTheSession) {
    startGateway();
    QDir(m_home.path()).mkpath("config/Vorq");
    QFile settings(m_home.filePath("config/Vorq/settings.json"));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write(R"({"vorq.session.token":"wrong","vorq.session.refreshToken":"wrong too"})");
    settings.close();
    const Outcome outcome = ask({"Summarise this"}, material);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, StartsWith("Your session expired. Sign in again.\n"));
}

TEST_F(AskEndToEndTest, ABackendKilledHalfWayIsAnError) {
    startGateway(400);
    signIn();
    const auto process = start(VORQ_PROGRAM, {"ask", "Summarise this"}, material);
    const QByteArray before = firstOutput(*process);
    m_gateway.kill();
    const Outcome outcome = finish(*process);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_FALSE(before.isEmpty());
    EXPECT_EQ(outcome.err, "The connection to Vorq broke off before the reply was complete.\n");
    stopGateway();
    // The database of the killed backend is whole, and the session still good.
    startGateway();
    EXPECT_EQ(ask({"Summarise this"}, material).status, 0);
}

TEST_F(AskEndToEndTest, SignalsStopItAtOnce) {
    startGateway(400);
    signIn();
    for (const int number : {SIGINT, SIGTERM}) {
        const auto process = start(VORQ_PROGRAM, {"ask", "Summarise this"}, material);
        firstOutput(*process);
        ::kill(static_cast<pid_t>(process->processId()), number);
        const Outcome outcome = finish(*process);
        EXPECT_EQ(process->exitStatus(), QProcess::CrashExit) << "it ends by the signal itself";
        EXPECT_EQ(outcome.status, number);
        EXPECT_EQ(outcome.err, "");
    }
}

TEST_F(AskEndToEndTest, AHangupThatIsToBeIgnoredIsIgnored) {
    startGateway(400);
    signIn();
    const auto process =
        start(VORQ_PROGRAM, {"ask", "Summarise this"}, material, [] { ::signal(SIGHUP, SIG_IGN); });
    firstOutput(*process);
    ::kill(static_cast<pid_t>(process->processId()), SIGHUP);
    EXPECT_EQ(finish(*process).status, 0);
}

TEST_F(AskEndToEndTest, EndlessInputIsRefusedBeforeAnythingIsSent) {
    startGateway();
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(m_environment);
    process->setStandardInputFile("/dev/zero");
    process->start(VORQ_PROGRAM, {"ask", "hi"});
    const Outcome outcome = finish(*process);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("larger than 16 MB"));
}

TEST_F(AskEndToEndTest, ClosedDescriptorsAreNoHarm) {
    startGateway();
    signIn();
    for (const QString closed : {"<&-", ">&-", "2>&-", "<&- >&- 2>&-"}) {
        const Outcome outcome =
            run("sh",
                {"-c", QString("exec " VORQ_PROGRAM " ask 'Summarise this: rivers carry silt.' ") +
                           closed});
        EXPECT_EQ(outcome.status, 0) << qPrintable(closed) << outcome.err;
    }
}

TEST_F(AskEndToEndTest, AReaderThatLeavesEndsItQuietly) {
    startGateway();
    signIn();
    const Outcome outcome =
        run("sh", {"-c", "printf 'Rivers carry silt. Silt feeds fields.' | " VORQ_PROGRAM
                         " ask 'Summarise this' | true"});
    EXPECT_EQ(outcome.err, "");
}

TEST_F(AskEndToEndTest, KilledDuringTheLaunchItIsStillSignedInAfterwards) {
    startGateway();
    signIn();
    for (int round = 0; round < 25; ++round) {
        const auto process = start(VORQ_PROGRAM, {"ask", "Summarise this"}, material);
        process->waitForStarted(patience);
        ::usleep(static_cast<useconds_t>(5000 * round));
        process->kill();
        process->waitForFinished(patience);
    }
    EXPECT_EQ(ask({"Summarise this"}, material).status, 0);
}

TEST_F(AskEndToEndTest, SeveralAtOnceKeepTheSession) {
    startGateway();
    signIn();
    for (int round = 0; round < 3; ++round) {
        std::vector<std::unique_ptr<QProcess>> copies;
        for (int copy = 0; copy < 6; ++copy)
            copies.push_back(start(VORQ_PROGRAM, {"ask", "Summarise this"}, material));
        for (const auto& copy : copies) {
            const Outcome outcome = finish(*copy);
            EXPECT_EQ(outcome.status, 0) << outcome.err;
        }
    }
}

TEST_F(AskEndToEndTest, TwoAtOnceWithAnExpiredTokenKeepTheSessionAndTheAvatar) {
    startGateway();
    signIn();
    const SlowRefreshRelay relay(m_environment.value("VORQ_API_BASE_URL").toUtf8(), 200ms);
    m_environment.insert("VORQ_API_BASE_URL", relay.url());
    const QString avatar = m_home.filePath("data/Vorq/profile-avatar.jpg");
    writeFile(avatar, "jpeg");
    for (int round = 0; round < 12; ++round) {
        replaceStoredToken("expired " + QByteArray::number(round));
        const auto first = start(VORQ_PROGRAM, {"ask", "Summarise this"}, material);
        const auto second = start(VORQ_PROGRAM, {"ask", "Summarise this"}, material);
        for (QProcess* process : {first.get(), second.get()}) {
            const Outcome outcome = finish(*process);
            EXPECT_EQ(outcome.status, 0) << "round " << round << ": " << outcome.err;
        }
        EXPECT_TRUE(QFile::exists(avatar)) << round;
        if (HasFailure()) return;
    }
}

// Root may write anywhere, so the programs become somebody else for this.
TEST_F(AskEndToEndTest, WithSettingsThatCannotBeWrittenItKeepsTheSessionAndSaysWhy) {
    startGateway();
    signIn();
    replaceStoredToken("expired");
    const QString settings = m_home.filePath("config/Vorq");
    writeFile(settings + "/settings.json.lock", "1\nvorq\nelsewhere\n");
    giveToNobody({m_home.path(), m_home.filePath("config"), settings, settings + "/settings.json",
                  m_home.filePath("data"), m_home.filePath("data/Vorq")});
    ASSERT_EQ(::chmod(qPrintable(settings), 0555), 0);
    for (int round = 0; round < 2; ++round) {
        const auto begin = std::chrono::steady_clock::now();
        const Outcome outcome = askAsNobody({"Summarise this"}, material);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err,
                    HasSubstr("Vorq cannot write its settings (Permission denied), so it could "
                              "not renew your session. You stay signed in."));
        EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
    }
    ASSERT_EQ(::chmod(qPrintable(settings), 0755), 0);
    const Outcome outcome = askAsNobody({"Summarise this"}, material);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST_F(AskEndToEndTest, KilledBeforeTheAnswerOfItsRefreshItIsStillSignedInAfterwards) {
    startGateway();
    signIn();
    const SlowRefreshRelay relay(m_environment.value("VORQ_API_BASE_URL").toUtf8(), 500ms);
    m_environment.insert("VORQ_API_BASE_URL", relay.url());
    replaceStoredToken("expired");
    const auto process = start(VORQ_PROGRAM, {"ask", "Summarise this"}, material);
    while (relay.granted() == 0 && process->state() != QProcess::NotRunning)
        process->waitForFinished(5);
    process->kill();
    process->waitForFinished(patience);
    ASSERT_EQ(process->exitStatus(), QProcess::CrashExit);
    const Outcome next = ask({"Summarise this"}, material);
    EXPECT_EQ(next.status, 0) << next.err;
}

TEST_F(AskEndToEndTest, OnATerminalTheStatusShowsUntilTheReply) {
    startGateway(50);
    signIn();
    const std::string shown = shownOnTerminal({"ask", "Summarise this"}, material);
    EXPECT_THAT(shown, StartsWith("\r\033[2KWorking..."));
    const auto reply = shown.find("**");
    ASSERT_NE(reply, std::string::npos) << shown;
    EXPECT_EQ(shown.find("Working...", reply), std::string::npos);
    EXPECT_THAT(shown.substr(0, reply), EndsWith("\r\033[2K"));
}

TEST_F(AskEndToEndTest, OnATerminalAFollowUpIsOffered) {
    startGateway();
    signIn();
    EXPECT_THAT(shownOnTerminal({"ask"}, material), HasSubstr("\r\n  › "));
    EXPECT_THAT(ask({}, material).out, Not(HasSubstr("›"))) << "piped output is the reply alone";
}

TEST_F(AskEndToEndTest, StandardInputIsReadAsTheTextThatItIs) {
    startGateway();
    signIn();
    const QString text("Rivers carry silt to the sea – it settles.");
    QByteArray wide("\xff\xfe", 2);
    for (const QChar character : text) {
        wide += char(character.unicode() & 0xff);
        wide += char(character.unicode() >> 8);
    }
    EXPECT_THAT(ask({"What do rivers carry?"}, wide).out, HasSubstr("silt"));
    EXPECT_THAT(ask({"What do rivers carry?"}, text.toUtf8() + "\xff\n").out, HasSubstr("silt"))
        << "for a stray byte";
    QByteArray noText;
    for (int value = 0; value < 4096; ++value)
        noText += char((value * 167 + value / 7) & 0xff);
    const Outcome refused = ask({"What is it?"}, noText);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "Standard input is not a text.\n");
    EXPECT_EQ(refused.out, "");
}

TEST_F(AskEndToEndTest, AFullOutputIsAnError) {
    startGateway();
    signIn();
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(m_environment);
    process->setStandardOutputFile("/dev/full");
    process->start(VORQ_PROGRAM, {"ask", "Summarise this"});
    process->write(material);
    process->closeWriteChannel();
    const Outcome outcome = finish(*process);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("could not be written: No space left on device."));
}

TEST_F(AskEndToEndTest, DamagedSettingsAreSaidOnceAndKept) {
    startGateway();
    QDir(m_home.path()).mkpath("config/Vorq");
    const QString path = m_home.filePath("config/Vorq/settings.json");
    QFile settings(path);
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write("{\"vorq.session.token\":\"abc");
    settings.close();
    signIn();
    const Outcome outcome = ask({"Summarise this"}, material);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "") << "the damage was mended with the sign-in";
    EXPECT_TRUE(QFile::exists(path + ".damaged-1"));
}

} // namespace
} // namespace vorq
