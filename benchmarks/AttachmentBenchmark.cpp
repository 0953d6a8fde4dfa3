// Measures how long attachments take to be read, and how long the main thread is held meanwhile.
// Prints one line for each; fails if one is over its limit.

#include "capture/attachments/FileAttachmentReader.h"
#include "platform/linux/documents/LinuxDocumentTools.h"
#include "support/async/TaskSlot.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int rounds = 9;
constexpr int pages = 100;
constexpr int linesOfPage = 9; // so that all pages lie within the limit of a text

constexpr double pdfLimit = 1.5;      // of pdftotext's time
constexpr double photoLimit = 1000.0; // milliseconds
constexpr double holdLimit = 16.0;    // milliseconds

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

double milliseconds(const QElapsedTimer& timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void writePdf(const QString& path) {
    QPdfWriter writer(path);
    writer.setResolution(100);
    QPainter painter(&writer);
    for (int page = 0; page < pages; ++page) {
        if (page > 0) writer.newPage();
        for (int line = 0; line < linesOfPage; ++line)
            painter.drawText(
                20, 40 + line * 30,
                u"Page %1: silt settles where the river slows, line %2."_s.arg(page).arg(line));
    }
}

// A smooth picture with the grain of a sensor, which makes a PNG large.
void writePhoto(const QString& path) {
    QImage photo(6000, 4000, QImage::Format_RGB32);
    std::mt19937 random(1);
    for (int row = 0; row < photo.height(); ++row) {
        auto* pixels = reinterpret_cast<QRgb*>(photo.scanLine(row));
        for (int column = 0; column < photo.width(); ++column) {
            const auto grain = static_cast<unsigned>(random());
            const auto channel = [grain](int base, unsigned shift) {
                return base + static_cast<int>((grain >> shift) & 7U);
            };
            pixels[column] = qRgb(channel(column * 200 / photo.width(), 0),
                                  channel(row * 200 / photo.height(), 8), channel(80, 16));
        }
    }
    photo.save(path, "PNG");
}

struct Reading {
    double time = 0; // milliseconds
    double held = 0; // the longest time in which the event loop did not turn
    qsizetype size = 0;
};

QCoro::Task<> readOnce(AttachmentReader& reader, QString path, qsizetype& size, QEventLoop& loop,
                       std::stop_token stop) {
    const AttachmentResult result = co_await reader.read(std::move(path), std::move(stop));
    if (result)
        size = std::max(result->textContent.value_or(QString()).size(),
                        result->imageDataURL.value_or(QString()).size());
    loop.quit();
}

Reading measure(AttachmentReader& reader, const QString& path) {
    Reading reading;
    QEventLoop loop;
    TaskSlot task;
    QTimer turns;
    QElapsedTimer sinceTurn;
    QObject::connect(&turns, &QTimer::timeout, [&] {
        reading.held = std::max(reading.held, milliseconds(sinceTurn));
        sinceTurn.start();
    });
    QElapsedTimer timer;
    timer.start();
    sinceTurn.start();
    turns.start(1);
    task.restart([&](std::stop_token stop) {
        return readOnce(reader, path, reading.size, loop, std::move(stop));
    });
    loop.exec();
    reading.time = milliseconds(timer);
    reading.held = std::max(reading.held, milliseconds(sinceTurn));
    return reading;
}

double peerTime(const QString& path) {
    QElapsedTimer timer;
    timer.start();
    QProcess peer;
    peer.start(u"pdftotext"_s, {path, u"-"_s});
    if (!peer.waitForFinished() || peer.exitCode() != 0) std::exit(2);
    return milliseconds(timer);
}

struct Readings {
    double time = 0; // of the one in the middle
    double held = 0; // the longest of all
    qsizetype size = 0;
};

Readings measureRounds(
    AttachmentReader& reader, const QString& path, const std::function<void()>& afterEach = [] {}) {
    Readings readings;
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const Reading reading = measure(reader, path);
        times.push_back(reading.time);
        readings.held = std::max(readings.held, reading.held);
        readings.size = reading.size;
        afterEach();
    }
    readings.time = median(times);
    return readings;
}

bool benchPdf(AttachmentReader& reader, const QString& path) {
    std::vector<double> peer;
    const Readings own = measureRounds(reader, path, [&] { peer.push_back(peerTime(path)); });
    const double ratio = own.time / median(peer);
    std::printf("pdf: %d pages, %lld characters in %.0f ms, pdftotext in %.0f ms, ratio %.2f; main "
                "thread held for %.1f ms at most\n",
                pages, static_cast<long long>(own.size), own.time, median(peer), ratio, own.held);
    return own.size > 0 && ratio <= pdfLimit && own.held <= holdLimit;
}

bool benchPhoto(AttachmentReader& reader, const QString& path) {
    const Readings own = measureRounds(reader, path);
    std::printf("photo: %.1f MB in %.0f ms, %.1f MB are sent; main thread held for %.1f ms at "
                "most\n",
                static_cast<double>(QFile(path).size()) / 1e6, own.time,
                static_cast<double>(own.size) / 1e6, own.held);
    return own.size > 0 && own.time <= photoLimit && own.held <= holdLimit;
}

int benchAttachments(const QString& helper) {
    const QTemporaryDir folder;
    const QString pdf = folder.filePath(u"a.pdf"_s);
    const QString photo = folder.filePath(u"a.png"_s);
    writePdf(pdf);
    writePhoto(photo);
    FileAttachmentReader reader(
        std::make_shared<LinuxDocumentTools>(LinuxDocumentTools::Programs{.helper = helper}));
    const bool isPdfGood = benchPdf(reader, pdf);
    const bool isPhotoGood = benchPhoto(reader, photo);
    return isPdfGood && isPhotoGood ? 0 : 1;
}

} // namespace
} // namespace vorq

// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return vorq::benchAttachments(vorq::LinuxDocumentTools::installedHelper());
}
