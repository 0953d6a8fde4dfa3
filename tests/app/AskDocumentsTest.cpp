// What is asked about a document, by the built programs.

#include "doubles/app/AskFixture.h"
#include "doubles/documents/MadeDocuments.h"

#include <QElapsedTimer>

#include <csignal>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <utility>

namespace vorq {
namespace {

using testing::HasSubstr;

class AskDocumentsTest : public AskEndToEndTest {
  protected:
    // A terminal, which closes with this object.
    class Terminal {
      public:
        Terminal() {
            EXPECT_EQ(::openpty(&m_near, &m_far, nullptr, nullptr, nullptr), 0);
            EXPECT_NE(::fcntl(m_near, F_SETFD, FD_CLOEXEC), -1);
        }
        Terminal(const Terminal&) = delete;
        Terminal& operator=(const Terminal&) = delete;
        ~Terminal() {
            ::close(m_far);
            ::close(m_near);
        }
        // Makes a new process the one that began in the terminal.
        [[nodiscard]] std::function<void()> asOwn() const {
            return [far = m_far] {
                ::setsid();
                ::ioctl(far, TIOCSCTTY, 0);
            };
        }

      private:
        int m_near = -1;
        int m_far = -1;
    };

    // What stands for LibreOffice.
    void putConverter(const QByteArray& script) {
        const QString path = m_home.filePath("soffice");
        writeFile(path, "#!/bin/sh\n" + script);
        ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner));
        m_environment.insert("PATH", m_home.path() + ":" + qEnvironmentVariable("PATH"));
    }

    // A question about a document whose converter hangs, and the number of that process.
    std::pair<std::unique_ptr<QProcess>, QByteArray>
    startConverting(const std::function<void()>& asChild = {}) {
        const QByteArray mark = m_home.filePath("pid").toUtf8();
        putConverter("echo $$ > " + mark + ".part\nmv " + mark + ".part " + mark + "\nsleep 600\n");
        writeFile(m_home.filePath("a.docx"), "PK");
        auto process =
            start(VORQ_PROGRAM, {"ask", "--file", m_home.filePath("a.docx"), "hi"}, {}, asChild);
        QFile file(QString::fromUtf8(mark));
        for (int wait = 0; wait < patience && !file.exists(); wait += 10)
            process->waitForFinished(10);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return {std::move(process), file.readAll().trimmed()};
    }
};

TEST_F(AskDocumentsTest, AnInterruptEndsItWhileItWaitsForItsFile) {
    startGateway();
    const QByteArray pipe = m_home.filePath("pipe.txt").toLocal8Bit();
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    const auto process = start(VORQ_PROGRAM, {"ask", "--file", pipe, "hi"});
    ASSERT_TRUE(process->waitForStarted(patience));
    EXPECT_FALSE(process->waitForFinished(200));
    ::kill(static_cast<pid_t>(process->processId()), SIGINT);
    EXPECT_EQ(finish(*process).status, SIGINT);
}

TEST_F(AskDocumentsTest, APipeThatNobodyWritesIsNotWaitedFor) {
    startGateway();
    signIn();
    const Outcome outcome = ask({"--file", "/dev/stdin", "Why?"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST_F(AskDocumentsTest, ADocumentIsReadForTheQuestion) {
    startGateway();
    signIn();
    const MadeDocuments made(m_home.path());
    const QString slides = made.putZip(
        "rivers.pptx", {{"ppt/slides/slide1.xml", "<a:t>The Nile carries silt to the sea.</a:t>"}});
    const Outcome outcome = ask({"--file", slides, "What does the Nile carry?"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("silt"));
}

TEST_F(AskDocumentsTest, AnInterruptEndsTheConverterToo) {
    startGateway();
    const auto [process, converter] = startConverting();
    ::kill(static_cast<pid_t>(process->processId()), SIGINT);
    const Outcome outcome = finish(*process);
    EXPECT_EQ(outcome.status, SIGINT);
    EXPECT_EQ(outcome.err, "");
    EXPECT_FALSE(QFile::exists("/proc/" + converter));
}

TEST_F(AskDocumentsTest, NothingIsLeftWhenTheTerminalIsClosedWhileADocumentIsRead) {
    startGateway();
    ASSERT_TRUE(QDir().mkpath(m_home.filePath("tmp")));
    m_environment.insert("TMPDIR", m_home.filePath("tmp"));
    auto terminal = std::make_unique<Terminal>();
    const auto [process, converter] = startConverting(terminal->asOwn());
    terminal.reset();
    EXPECT_EQ(finish(*process).status, SIGHUP);
    EXPECT_FALSE(QFile::exists("/proc/" + converter));
    EXPECT_EQ(QDir(m_home.filePath("tmp")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList());
}

// The program that unpacks it would ask on the terminal.
TEST_F(AskDocumentsTest, NobodyIsAskedForThePasswordOfADocument) {
    startGateway();
    signIn();
    putConverter("exit 1\n");
    const MadeDocuments made(m_home.path());
    made.put("ppt/slides/slide1.xml", "<a:t>secret</a:t>");
    MadeDocuments::runTool("zip", {"-q", "-P", "password", "a.pptx", "ppt/slides/slide1.xml"},
                           m_home.path());
    const Terminal terminal;
    QElapsedTimer elapsed;
    elapsed.start();
    const auto process = start(VORQ_PROGRAM, {"ask", "--file", m_home.filePath("a.pptx"), "Why?"},
                               {}, terminal.asOwn());
    EXPECT_EQ(finish(*process).status, 0);
    EXPECT_LT(elapsed.elapsed(), patience / 2) << "nobody answers";
}

} // namespace
} // namespace vorq
