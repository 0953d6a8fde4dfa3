// The converter of office documents that fails, hangs or looks around.

#include "doubles/documents/RealDocumentsFixture.h"

#include <QFile>
#include <QProcess>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

class ConverterTest : public RealDocumentsFixture {
  protected:
    // A converter that does what the script says.
    void convertBy(const QByteArray& script) {
        m_programs.office = m_made.put("soffice", "#!/bin/sh\n" + script);
        QFile::setPermissions(m_programs.office, QFile::ReadOwner | QFile::ExeOwner);
    }
    QString textBy(const QString& path) {
        LinuxDocumentTools tools(m_programs);
        const auto loaded =
            DocumentLoader(tools, PromptAttachment::Pipes::Refused, m_stop.get_token()).load(path);
        return loaded ? *loaded->textContent : "refused: " + loaded.error();
    }
    const QString m_nothing = "(Attached a.docx; could not extract text. Export to PDF if needed.)";
    QString m_document = m_made.put("a.docx", "PK");
};

TEST_F(ConverterTest, IsMissing) {
    m_programs.office = "/nowhere/soffice";
    EXPECT_EQ(textBy(m_document), m_nothing);
}

TEST_F(ConverterTest, Crashes) {
    convertBy("kill -SEGV $$\n");
    EXPECT_EQ(textBy(m_document), m_nothing);
}

TEST_F(ConverterTest, FailsWithoutSayingSo) {
    convertBy("exit 0\n");
    EXPECT_EQ(textBy(m_document), m_nothing);
}

TEST_F(ConverterTest, HasNoRoomForItsCopyAndTheUserIsTold) {
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", m_document.toUtf8()); // in which nothing can be
    EXPECT_THAT(textBy(m_document).toStdString(),
                testing::EndsWith("no room for a copy of it among the temporary files."));
    if (before.isNull())
        qunsetenv("TMPDIR");
    else
        qputenv("TMPDIR", before);
}

TEST_F(ConverterTest, HangsAndIsKilledWithItsChildrenWhenStopped) {
    const QString mark = m_folder.filePath("pid");
    convertBy("sleep 600 &\necho $! > " + mark.toUtf8() + "\nwait\n");
    std::jthread stopper([&] {
        while (!QFile::exists(mark) || QFile(mark).size() == 0)
            std::this_thread::sleep_for(5ms);
        m_stop.request_stop();
    });
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_THAT(textBy(m_document).toStdString(), testing::HasSubstr("stopped"));
    EXPECT_LT(elapsed.elapsed(), 30'000);
    QFile file(mark);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray pid = file.readAll().trimmed();
    // Killed, it is gone or a zombie that nobody has waited for yet.
    const auto isGone = [&pid] {
        QFile status("/proc/" + pid + "/stat");
        return !status.open(QIODevice::ReadOnly) || status.readAll().contains(") Z ");
    };
    for (int wait = 0; wait < 1000 && !isGone(); ++wait)
        std::this_thread::sleep_for(5ms);
    EXPECT_TRUE(isGone());
}

TEST_F(ConverterTest, HasAProfileOfItsOwnWhereNoMacroRunsAndNoDisplay) {
    const QString seen = m_folder.filePath("seen");
    qputenv("DISPLAY", ":99");
    convertBy("{ echo \"home $HOME display $DISPLAY\"; cat \"$HOME\"/profile/user/*.xcu; } > " +
              seen.toUtf8() + "\n");
    EXPECT_EQ(textBy(m_document), m_nothing);
    qunsetenv("DISPLAY");
    QFile file(seen);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray text = file.readAll();
    EXPECT_FALSE(text.contains("home " + qgetenv("HOME") + " "));
    EXPECT_TRUE(text.contains("display \n"));
    EXPECT_TRUE(text.contains("DisableMacrosExecution"));
}

// Where the system lets a user have a network of its own.
TEST_F(ConverterTest, HasNoNetwork) {
    const QString seen = m_folder.filePath("seen");
    convertBy("tail -n +3 /proc/net/dev | cut -d: -f1 | tr -d ' ' > " + seen.toUtf8() + "\n");
    QProcess probe;
    probe.start("unshare", {"-rn", "true"});
    ASSERT_TRUE(probe.waitForFinished());
    EXPECT_EQ(textBy(m_document), m_nothing);
    QFile file(seen);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    if (probe.exitCode() == 0) EXPECT_EQ(file.readAll(), "lo\n");
}

} // namespace
} // namespace vorq
