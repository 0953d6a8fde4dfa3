// How long the panel holds up its event loop while a reply streams into it, drawn by the processor.
//
// Each step is one arrival of text and everything that follows from it until the frame is drawn.
// The report gives the middle step and the worst one.

#include "ReplyCorpus.h"
#include "rendering/AssistantReplyDocument.h"
#include "ui/PanelStage.h"

#include <QElapsedTimer>
#include <QGuiApplication>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace vorq {
namespace {

constexpr qsizetype replySize = 40 * 1024;
constexpr qsizetype stepSize = 200;

struct Times {
    double median = 0;
    double worst = 0;
};

Times timesOf(std::vector<double> steps) {
    std::ranges::sort(steps);
    return {steps[steps.size() / 2], steps.back()};
}

double milliseconds(const QElapsedTimer& timer) {
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void stream(const char* name, const QString& reply, qsizetype step) {
    PanelStage stage;
    stage.say("Question");
    const QUuid id = stage.work();
    stage.show();
    stage.settle(300);
    std::vector<double> steps;
    for (qsizetype length = step; length < reply.size() + step; length += step) {
        QElapsedTimer timer;
        timer.start();
        const QString committed =
            AssistantReplyDocument::committedSource(reply.left(length), length >= reply.size());
        if (!committed.isEmpty()) stage.grow(id, committed);
        stage.window->grabWindow();
        steps.push_back(milliseconds(timer));
        stage.settle();
    }
    const Times times = timesOf(std::move(steps));
    std::printf("%-28s %6lld KB  median %7.2f ms  worst %7.2f ms\n", name,
                static_cast<long long>(reply.size() / 1024), times.median, times.worst);
}

// A reply that is there at once: the longest turn of the event loop until it is set to its end.
void open(const char* name, const QString& reply) {
    PanelStage stage;
    stage.show();
    stage.settle(100);
    stage.answer(reply);
    std::vector<double> turns;
    QElapsedTimer whole;
    whole.start();
    do {
        QElapsedTimer timer;
        timer.start();
        stage.settle();
        turns.push_back(milliseconds(timer));
    } while (whole.elapsed() < 3000);
    const Times times = timesOf(std::move(turns));
    std::printf("%-28s %6lld KB  median %7.2f ms  worst %7.2f ms\n", name,
                static_cast<long long>(reply.size() / 1024), times.median, times.worst);
}

} // namespace
} // namespace vorq

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    vorq::prepareUi();
    const QString text = QString::fromStdString(
        vorq::bench::replyText(vorq::bench::Script::Typographic, 2 * vorq::replySize));
    vorq::stream("stream, 200 at a time", text.left(vorq::replySize), vorq::stepSize);
    vorq::open("reply at once", text.left(vorq::replySize));
    vorq::open("a word of 100 000", QString(100000, u'm'));
    vorq::open("a megabyte at once", text.repeated(1 + (1 << 20) / text.size()));
    return 0;
}
