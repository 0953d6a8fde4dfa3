#pragma once

#include "platform/Clock.h"

#include <QByteArray>
#include <QPointF>
#include <QRectF>
#include <QString>

namespace vorq {

/// The three plain text logs of captures, which only ever grow by lines. They tell how a capture
/// went and never what was captured. A failure to write is ignored. Main thread only.
class CaptureLog {
  public:
    /// `captureFile` is made with its folders. An empty `placeFile` or `pillFile` keeps that log
    /// off.
    CaptureLog(Clock& clock, QString captureFile, QString placeFile, QString pillFile = {});

    /// "capture-debug.log" in the library's folder, and "/tmp/vorq-place.log" unless the variable
    /// VORQ_DEBUG_PLACE is "0".
    [[nodiscard]] static QString captureFileIn(const QString& applicationSupportFolder);
    [[nodiscard]] static QString placeFileOfEnvironment();
    [[nodiscard]] static QString commonPillFile() { return QStringLiteral("/tmp/vorq-pills.log"); }

    /// Adds a line that begins with the moment, as "2026-03-01T10:20:30Z".
    void appendCaptureDebug(const QString& line);

    /// Adds a line that begins with the moment, as "2026-03-01 10:20:30 +0000".
    void placeDbg(const QString& message);

    /// The same, of what is written over selections.
    void pillDbg(const QString& message);

  private:
    void appendWithMoment(const QString& file, const QString& message);

    Clock& m_clock;
    QString m_captureFile;
    QString m_placeFile;
    QString m_pillFile;
};

/// As they stand in the lines of the log: "(x, y, width, height)" and "(x, y)".
[[nodiscard]] QString logged(const QRectF& rect);
[[nodiscard]] QString logged(QPointF point);

} // namespace vorq
