// How long the panel holds up its main thread while a reply streams into it, drawn by the
// processor.
//
// Text arrives at the rate of the screen, and the window draws when its own render loop has it
// draw. Each event that the main thread deals with is timed: what takes in the text and sets it,
// what draws a frame, and the longest of all. Budget: 16 ms for the longest while streaming.
//
// Usage: bench-panel [PART OF A NAME]

#include "EventTimer.h"
#include "ReplyCorpus.h"
#include "doubles/ui/PanelStage.h"
#include "rendering/AssistantReplyDocument.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qsizetype replySize = 40 * 1024;
constexpr qsizetype stepSize = 200;
constexpr int frameTime = 16;
constexpr int rounds = 5;

using bench::EventTimer;

struct Times {
    double median = 0;
    double longest = 0;
};

Times timesOf(std::vector<double> values) {
    if (values.empty()) return {};
    std::ranges::sort(values);
    return {values[values.size() / 2], values.back()};
}

// What one round saw, in milliseconds.
struct Round {
    Times setting; // taking in a piece of text
    Times drawing;
    double longest = 0;
    double longestOnProcessor = 0;
};

Round roundOf(const EventTimer& application, std::vector<double> settings) {
    Round round;
    std::vector<double> frames;
    for (const EventTimer::Turn& turn : application.turns()) {
        if (turn.isFrame) frames.push_back(turn.wall);
        round.longest = std::max(round.longest, turn.wall);
        round.longestOnProcessor = std::max(round.longestOnProcessor, turn.processor);
    }
    round.setting = timesOf(std::move(settings));
    round.drawing = timesOf(std::move(frames));
    return round;
}

Round stream(EventTimer& application, const QString& reply) {
    PanelStage stage;
    stage.say(u"Question"_s);
    const QUuid id = stage.work();
    stage.show();
    stage.settle(300);
    std::vector<double> settings;
    qsizetype length = 0;
    QEventLoop loop;
    QTimer arrivals;
    arrivals.setTimerType(Qt::PreciseTimer);
    QObject::connect(&arrivals, &QTimer::timeout, &loop, [&] {
        QElapsedTimer timer;
        timer.start();
        length += stepSize;
        const bool isWhole = length >= reply.size();
        const QString committed =
            AssistantReplyDocument::committedSource(reply.left(length), isWhole);
        if (!committed.isEmpty()) stage.grow(id, committed);
        settings.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
        if (!isWhole) return;
        arrivals.stop();
        QTimer::singleShot(200, &loop, &QEventLoop::quit);
    });
    application.restart();
    arrivals.start(frameTime);
    loop.exec();
    return roundOf(application, std::move(settings));
}

// A reply that is there at once, until it is set to its end.
Round open(EventTimer& application, const QString& reply) {
    PanelStage stage;
    stage.show();
    stage.settle(100);
    QEventLoop loop;
    application.restart();
    QElapsedTimer timer;
    timer.start();
    stage.answer(reply);
    const double setting = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    QTimer::singleShot(2500, &loop, &QEventLoop::quit);
    loop.exec();
    return roundOf(application, {setting});
}

double middle(const std::vector<Round>& all, const std::function<double(const Round&)>& value) {
    std::vector<double> values;
    for (const Round& round : all)
        values.push_back(value(round));
    return timesOf(std::move(values)).median;
}

void report(const char* name, const QString& reply, const std::function<Round()>& measure) {
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() > 1 && !QString::fromLatin1(name).contains(arguments[1])) return;
    std::vector<Round> all;
    for (int round = 0; round < rounds; ++round)
        all.push_back(measure());
    double worst = 0;
    for (const Round& round : all)
        worst = std::max(worst, round.longest);
    std::printf("%-22s %5lld KB | set %6.2f longest %6.2f | draw %6.2f longest %6.2f | "
                "event %6.2f (processor %6.2f) worst of %d %6.2f ms\n",
                name, static_cast<long long>(reply.size() / 1024),
                middle(all, [](const Round& r) { return r.setting.median; }),
                middle(all, [](const Round& r) { return r.setting.longest; }),
                middle(all, [](const Round& r) { return r.drawing.median; }),
                middle(all, [](const Round& r) { return r.drawing.longest; }),
                middle(all, [](const Round& r) { return r.longest; }),
                middle(all, [](const Round& r) { return r.longestOnProcessor; }), rounds, worst);
    std::fflush(stdout);
}

// A long conversation that nobody touches. The caret of the composer blinks; it is measured
// without.
void rest(EventTimer& application) {
    constexpr int messages = 2000;
    constexpr int seconds = 5;
    PanelStage stage;
    for (int i = 0; i < messages; ++i)
        i % 2 == 0 ? stage.say(u"Question"_s) : void(stage.answer(u"Answer **bold** text."_s));
    stage.show();
    stage.find(u"Composer"_s)->setProperty("enabled", false);
    stage.settle(1500);
    QEventLoop loop;
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    application.restart();
    const std::clock_t before = std::clock();
    loop.exec();
    const double busy = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    std::printf("rest with %d messages: %.2f %% of a processor, %zu events in %d s\n", messages,
                100 * busy / seconds, application.turns().size(), seconds);
}

void measureAll(EventTimer& application) {
    const QString text =
        QString::fromStdString(bench::replyText(bench::Script::Typographic, 2 * replySize));
    const QString whole = text.left(replySize);
    const QString word(100000, u'm');
    const QString megabyte = text.repeated(1 + (1 << 20) / text.size());
    report("stream, 200 at a time", whole, [&] { return stream(application, whole); });
    report("reply at once", whole, [&] { return open(application, whole); });
    report("a word of 100 000", word, [&] { return open(application, word); });
    report("a megabyte at once", megabyte, [&] { return open(application, megabyte); });
    if (QCoreApplication::arguments().value(1).isEmpty() ||
        QCoreApplication::arguments()[1] == u"rest")
        rest(application);
}

} // namespace
} // namespace vorq

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    vorq::bench::EventTimer application(argc, argv);
    vorq::prepareUi();
    vorq::measureAll(application);
    return 0;
}
