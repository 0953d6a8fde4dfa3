// Draws the walkthrough into pictures for looking at: vorq-walkthrough-shot FOLDER [TEXT_SCALE]
// QT_SCALE_FACTOR draws it larger.

#include "doubles/ui/WalkthroughStage.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int walkthroughMargin = 40;

struct WalkthroughShot {
    QString name;
    std::function<void(WalkthroughStage&)> act;
    int tallest = 900;
};

void openChecks(WalkthroughStage& stage) {
    stage.walkthrough->showSelfTest();
    stage.settle();
}

void runChecks(WalkthroughStage& stage, int count) {
    openChecks(stage);
    stage.walkthrough->selfTest()->start();
    stage.settle();
    stage.finishChecks(count);
}

const QList<WalkthroughShot>& walkthroughShots() {
    static const QList<WalkthroughShot> all = {
        {u"request"_s, [](WalkthroughStage&) {}},
        {u"asking"_s, [](WalkthroughStage& stage) { stage.walkthrough->openSystemSettings(); }},
        {u"refused"_s,
         [](WalkthroughStage& stage) {
             stage.walkthrough->openSystemSettings();
             stage.settle();
             stage.clock.advance(Walkthrough::answerLimit);
         }},
        {u"granted"_s,
         [](WalkthroughStage& stage) {
             stage.privacy.programs = {u"FeatherPad"_s, u"Kate"_s, u"Okular"_s};
             stage.grant();
         }},
        {u"granted-alone"_s, [](WalkthroughStage& stage) { stage.grant(); }},
        {u"help"_s, [](WalkthroughStage& stage) { stage.walkthrough->showHelp(); }},
        {u"checks-new"_s, openChecks},
        {u"checks-running"_s, [](WalkthroughStage& stage) { runChecks(stage, 3); }},
        {u"checks-ended"_s,
         [](WalkthroughStage& stage) {
             runChecks(stage, 2);
             stage.walkthrough->selfTest()->cancel();
         }},
        {u"checks-failed"_s, [](WalkthroughStage& stage) { runChecks(stage, 99); }},
        {u"checks-small"_s, [](WalkthroughStage& stage) { runChecks(stage, 99); }, 420},
        {u"checks-passed"_s,
         [](WalkthroughStage& stage) {
             stage.isLucky = true;
             runChecks(stage, 99);
         }},
    };
    return all;
}

void drawWalkthrough(const WalkthroughShot& shot, bool isDark, double scale, const QDir& folder) {
    WalkthroughStage stage;
    stage.setDark(isDark);
    stage.look.setTextScale(scale);
    stage.show(shot.tallest);
    shot.act(stage);
    stage.settle(400);
    const QColor behind(isDark ? u"#3A3F58"_s : u"#B8C4DC"_s);
    stage.window->setColor(behind); // a picture of a window has nothing behind it
    stage.settle(100);
    const QImage window = stage.window->grabWindow();
    const int margin = static_cast<int>(walkthroughMargin * window.devicePixelRatio());
    QImage picture(window.size() + QSize(2 * margin, 2 * margin), QImage::Format_RGB32);
    picture.fill(behind);
    QPainter painter(&picture);
    painter.drawImage(QRect(QPoint(margin, margin), window.size()), window);
    painter.end();
    const QString name =
        folder.filePath(u"walkthrough-%1-%2.png"_s.arg(shot.name, isDark ? u"dark"_s : u"light"_s));
    picture.save(name);
    std::puts(qPrintable(name));
}

} // namespace
} // namespace vorq

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) {
        std::fputs("usage: vorq-walkthrough-shot FOLDER [TEXT_SCALE]\n", stderr);
        return 2;
    }
    vorq::prepareUi();
    const QDir folder(arguments[1]);
    (void)folder.mkpath(u"."_s);
    const double scale = arguments.value(2, u"1"_s).toDouble();
    for (const auto& shot : vorq::walkthroughShots())
        for (const bool isDark : {true, false})
            vorq::drawWalkthrough(shot, isDark, scale, folder);
    return 0;
}
