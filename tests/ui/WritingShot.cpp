// Draws the states of the writing tools' card into pictures for looking at: vorq-writing-shot
// FOLDER

#include "doubles/ui/WritingStage.h"

#include <QDir>
#include <QGuiApplication>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

struct Shot {
    QByteArray name;
    std::function<void(WritingStage&)> prepare;
    bool pointsUp = true;
};

const QString original = u"The plants I grew up with tell it very differently, and I think the "
                         "difference is really quite important for how we live."_s;
const QString suggestion = u"The plants I grew up with tell it as a story of enough, and that "
                           "difference should change how we live."_s;

void work(WritingStage& stage) {
    stage.card->run(1);
    stage.clock.settle();
}

void suggest(WritingStage& stage) {
    stage.suggest("warmer", suggestion);
    stage.card->setDraft("a little warmer");
}

// What comes of asking and replacing.
QList<Shot> shotsOfUse() {
    return {
        {"empty", [](WritingStage&) {}},
        {"working", work, false},
        {"suggestion", suggest},
        {"plain",
         [](WritingStage& s) {
             s.suggest("warmer", "Another take.");
             suggest(s);
             s.card->setShowsDifference(false);
         }},
        {"above", suggest, false},
        {"replaced",
         [](WritingStage& s) {
             suggest(s);
             s.card->setDraft({});
             s.replace();
         }},
        {"changed",
         [](WritingStage& s) {
             suggest(s);
             s.replacer.outcome = SelectionReplacer::Outcome::OnClipboard;
             s.replace();
         }},
        {"replaced-and-on",
         [](WritingStage& s) {
             suggest(s);
             s.replace();
             s.suggest("again", "Another take.");
         }},
        {"failed-after-a-take",
         [](WritingStage& s) {
             suggest(s);
             s.card->setDraft("again");
             s.card->submit();
             s.clock.settle();
             s.answer(503, R"({"error":"The provider is busy."})");
         }},
        {"declined",
         [](WritingStage& s) {
             work(s);
             s.answer(422, R"({"error":"Writing or rewriting needs a language model, and none is )"
                           R"(connected to this gateway."})");
         }},
    };
}

// Where there is much or little to show, or it looks otherwise.
QList<Shot> shotsOfLooks() {
    return {
        {"long", [](WritingStage& s) { s.suggest("longer", (suggestion + u' ').repeated(12)); }},
        {"signed-out",
         [](WritingStage& s) {
             s.state->account().signOut();
             s.clock.settle();
         }},
        {"notice",
         [](WritingStage& s) {
             s.card->setNotice("Highlight the text that is to be rewritten, then try again.");
         }},
        {"contrast",
         [](WritingStage& s) {
             s.look->setDesktop({.wantsHighContrast = true});
             suggest(s);
         }},
        {"large",
         [](WritingStage& s) {
             s.look->setTextScale(1.5);
             suggest(s);
         }},
        {"opaque",
         [](WritingStage& s) {
             s.look->setTier(PanelLook::Tier::Opaque);
             suggest(s);
         }},
    };
}

void draw(const QDir& folder, const Shot& shot, bool isDark) {
    WritingStage stage(original);
    stage.state->appearance().setAppAppearance(isDark ? AppAppearancePreference::Dark
                                                      : AppAppearancePreference::Light);
    shot.prepare(stage);
    stage.show(shot.pointsUp);
    stage.window->setColor(isDark ? QColor(0x1f2023) : QColor(Qt::white));
    stage.settle(250);
    const QImage picture = stage.window->grabWindow();
    const QString path = folder.filePath(
        u"writing-%1-%2.png"_s.arg(QString::fromUtf8(shot.name), isDark ? u"dark"_s : u"light"_s));
    if (!picture.save(path)) std::fprintf(stderr, "cannot write %s\n", qUtf8Printable(path));
}

} // namespace
} // namespace vorq

int main(int argc, char** argv) {
    qputenv("QT_QUICK_BACKEND", "software");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    vorq::prepareUi();
    if (argc != 2) {
        std::fputs("usage: vorq-writing-shot FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    if (!folder.mkpath(u"."_s)) return 1;
    for (const vorq::Shot& shot : vorq::shotsOfUse() + vorq::shotsOfLooks())
        for (const bool isDark : {true, false})
            vorq::draw(folder, shot, isDark);
    return 0;
}
