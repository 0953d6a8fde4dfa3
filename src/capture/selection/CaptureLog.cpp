#include "capture/selection/CaptureLog.h"

#include "support/Date.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;

// A log in a folder that everyone may write to: whatever was put there to be followed or waited for
// is left alone.
void append(const QString& path, const QByteArray& line) {
    const int descriptor =
        ::open(QFile::encodeName(path).constData(),
               O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, ownerOnly);
    if (descriptor < 0) return;
    struct stat status{};
    const bool isOurs = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                        status.st_uid == ::geteuid();
    if (isOurs &&
        ::write(descriptor, line.constData(), static_cast<std::size_t>(line.size())) < 0) {
        // A line that cannot be written is lost.
    }
    ::close(descriptor);
}

} // namespace

CaptureLog::CaptureLog(Clock& clock, QString captureFile, QString placeFile, QString pillFile)
    : m_clock(clock),
      m_captureFile(std::move(captureFile)),
      m_placeFile(std::move(placeFile)),
      m_pillFile(std::move(pillFile)) {}

QString CaptureLog::captureFileIn(const QString& applicationSupportFolder) {
    const QString folder =
        applicationSupportFolder.isEmpty() ? QDir::tempPath() : applicationSupportFolder;
    return folder + u"/Vorq/Library/capture-debug.log"_s;
}

QString CaptureLog::placeFileOfEnvironment() {
    if (qgetenv("VORQ_DEBUG_PLACE") == "0") return {};
    return u"/tmp/vorq-place.log"_s;
}

void CaptureLog::appendCaptureDebug(const QString& line) {
    QDir().mkpath(QFileInfo(m_captureFile).path());
    const Date now{std::chrono::milliseconds(m_clock.wallTime().toMSecsSinceEpoch())};
    append(m_captureFile, isoDate(now) + ' ' + line.toUtf8() + '\n');
}

void CaptureLog::placeDbg(const QString& message) {
    appendWithMoment(m_placeFile, message);
}

void CaptureLog::pillDbg(const QString& message) {
    appendWithMoment(m_pillFile, message);
}

void CaptureLog::appendWithMoment(const QString& file, const QString& message) {
    if (file.isEmpty()) return;
    const QString now = m_clock.wallTime().toString(u"yyyy-MM-dd HH:mm:ss +0000"_s);
    append(file, (now + u' ' + message + u'\n').toUtf8());
}

QString logged(const QRectF& rect) {
    return u"(%1, %2, %3, %4)"_s.arg(rect.x(), 0, 'f', 1)
        .arg(rect.y(), 0, 'f', 1)
        .arg(rect.width(), 0, 'f', 1)
        .arg(rect.height(), 0, 'f', 1);
}

QString logged(QPointF point) {
    return u"(%1, %2)"_s.arg(point.x(), 0, 'f', 1).arg(point.y(), 0, 'f', 1);
}

} // namespace vorq
