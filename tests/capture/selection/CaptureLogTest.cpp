#include "capture/selection/CaptureLog.h"
#include "platform/testing/ManualClock.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace vorq {
namespace {

class CaptureLogTest : public testing::Test {
  protected:
    [[nodiscard]] static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;
    ManualClock clock;
    QString captureFile = folder.filePath("Vorq/Library/capture-debug.log");
    QString placeFile = folder.filePath("place.log");
    QString pillFile = folder.filePath("pills.log");
    CaptureLog log{clock, captureFile, placeFile, pillFile};
};

TEST_F(CaptureLogTest, AppendsLinesWithTheirMoment) {
    log.appendCaptureDebug("trusted=true chars=4");
    clock.advance(std::chrono::seconds(61));
    log.appendCaptureDebug("grüße");

    EXPECT_EQ(contentOf(captureFile),
              "2026-01-01T00:00:00Z trusted=true chars=4\n2026-01-01T00:01:01Z grüße\n");
}

TEST_F(CaptureLogTest, WritesPlacesWithTheirMoment) {
    log.placeDbg("capture: not trusted");
    log.placeDbg("again");

    EXPECT_EQ(contentOf(placeFile), "2026-01-01 00:00:00 +0000 capture: not trusted\n"
                                    "2026-01-01 00:00:00 +0000 again\n");
}

TEST_F(CaptureLogTest, WritesOfPillsWithTheirMoment) {
    log.pillDbg("paste: aborted");
    log.pillDbg("again");

    EXPECT_EQ(contentOf(pillFile), "2026-01-01 00:00:00 +0000 paste: aborted\n"
                                   "2026-01-01 00:00:00 +0000 again\n");
    EXPECT_EQ(contentOf(placeFile), "");
}

TEST_F(CaptureLogTest, IsOffForPlacesOnlyByZero) {
    qputenv("VORQ_DEBUG_PLACE", "0");
    EXPECT_EQ(CaptureLog::placeFileOfEnvironment(), "");
    qputenv("VORQ_DEBUG_PLACE", "1");
    EXPECT_EQ(CaptureLog::placeFileOfEnvironment(), "/tmp/vorq-place.log");
    qputenv("VORQ_DEBUG_PLACE", "");
    EXPECT_EQ(CaptureLog::placeFileOfEnvironment(), "/tmp/vorq-place.log");
    qunsetenv("VORQ_DEBUG_PLACE");
    EXPECT_EQ(CaptureLog::placeFileOfEnvironment(), "/tmp/vorq-place.log");
}

TEST_F(CaptureLogTest, LiesInTheLibraryOrAmongTemporaryFiles) {
    EXPECT_EQ(CaptureLog::captureFileIn("/data"), "/data/Vorq/Library/capture-debug.log");
    EXPECT_TRUE(CaptureLog::captureFileIn("").endsWith("/Vorq/Library/capture-debug.log"));
    EXPECT_FALSE(CaptureLog::captureFileIn("").startsWith("/Vorq"));
}

TEST_F(CaptureLogTest, DoesNotFollowALinkThatSomeonePutThere) {
    const QString target = folder.filePath("target");
    QFile file(target);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    ASSERT_TRUE(QFile::link(target, placeFile));

    log.placeDbg("a line");
    EXPECT_EQ(contentOf(target), "");
}

TEST_F(CaptureLogTest, DoesNotWaitForAReaderOfAPipe) {
    ASSERT_EQ(::mkfifo(placeFile.toUtf8().constData(), 0600), 0);

    log.placeDbg("a line");
}

TEST_F(CaptureLogTest, IgnoresAFolderThatCannotBeWrittenTo) {
    CaptureLog nowhere(clock, "/proc/no/such/capture.log", "/proc/place.log");
    nowhere.appendCaptureDebug("a line");
    nowhere.placeDbg("a line");
}

TEST_F(CaptureLogTest, ShowsPlacesWithOneDecimal) {
    EXPECT_EQ(logged(QRectF(1, 2.5, 40, 14)), "(1.0, 2.5, 40.0, 14.0)");
    EXPECT_EQ(logged(QPointF(-3, 0)), "(-3.0, 0.0)");
}

} // namespace
} // namespace vorq
