// Draws the states of the panel into pictures for looking at: vorq-panel-shot FOLDER

#include "doubles/backend/ScriptedBrowserSignIn.h"
#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyView.h"

#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QTest>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int margin = 40;

struct Shot {
    QByteArray name;
    std::function<void(PanelStage&)> prepare;
    std::function<void(PanelStage&)> act = {};
};

void greet(PanelStage& stage) {
    stage.answer("Hello 👋, Vorq here…");
}

PromptAttachment deepenClip() {
    PromptAttachment clip;
    clip.isDeepenSelection = true;
    clip.textContent = "steady output in noisy light";
    return clip;
}

PromptAttachment fileClip() {
    PromptAttachment clip;
    clip.fileName = "leaf-optics.md";
    clip.textContent = "x";
    return clip;
}

void reply(PanelStage& stage) {
    stage.say("Summarise this and tell me how I could test it at home.\n\n📎 Text capture, "
              "leaf-optics.md");
    stage.answer(
        samples::leaves, false,
        VorqFollowUp{"Which part should we take further?",
                     {"Explain the green gap", "Turn it into flashcards", "Quiz me on this"}});
}

void draft(PanelStage& stage) {
    stage.panel->attachments().append(deepenClip());
    stage.panel->attachments().append(fileClip());
    stage.panel->setPrompt("How does this change in shade?");
}

QUuid appendLoading(PanelStage& stage, const QString& name) {
    PromptAttachment clip;
    clip.fileName = name;
    stage.panel->attachments().appendLoading(clip);
    return clip.id;
}

// One of each state, and a prompt that waits for them.
void attach(PanelStage& stage) {
    draft(stage);
    const QUuid locked = appendLoading(stage, "Lecture 7 – light harvesting.pdf");
    appendLoading(stage, "Slides of the whole semester with all of its pictures.pptx");
    appendLoading(stage, "leaf.heic");
    stage.panel->attachments().fail(
        locked, "the file is locked with a password. Save it without one, then try again.");
    stage.panel->waiting()->wait();
}

void attachMany(PanelStage& stage) {
    for (int i = 1; i < 40; ++i)
        appendLoading(stage, u"page %1.png"_s.arg(i));
    stage.settle(50);
    for (int i = 0; i < 3; ++i)
        QTest::keyClick(stage.window.get(), Qt::Key_Tab);
}

void openNotes(PanelStage& stage) {
    for (const char* title : {"Leaf optics", "The green gap", "Red algae"})
        stage.state->library().createBlankNote(title, HubArea::Study);
    stage.panel->tray()->setShown(true);
    stage.panel->tray()->setMode(AttachTrayState::Mode::Notes);
    stage.settle(100);
}

void hoverFiles(PanelStage& stage) {
    stage.find("DropZone")->setProperty("isWelcoming", true);
}

// What is attached and how.
QList<Shot> shotsOfClips() {
    return {
        {"clips", reply, attach},
        {"clips-many", reply, attachMany},
        {"clips-large", reply,
         [](PanelStage& s) {
             s.look->setTextScale(2);
             attach(s);
         }},
        {"clips-contrast",
         [](PanelStage& s) {
             s.look->setDesktop({.wantsHighContrast = true});
             reply(s);
         },
         attach},
        {"notes-search", reply,
         [](PanelStage& s) {
             openNotes(s);
             s.panel->attachableNotes()->setSearch("gap");
         }},
        {"notes-all", reply, openNotes},
        {"drop", reply, hoverFiles},
    };
}

void working(PanelStage& stage) {
    greet(stage);
    stage.say("Attached: Text capture");
    stage.work();
    stage.say("And compare it with red algae.");
}

void growing(PanelStage& stage) {
    stage.say("Attached: Text capture");
    stage.answer(QString(samples::leaves).section("\n\n", 0, 5), true);
    stage.panel->setPrompt("What about shade leaves");
}

void select(PanelStage& stage) {
    auto* view = qobject_cast<ReplyView*>(stage.find("ReplyView"));
    view->select({1, 0}, {1, 47});
}

void scrollUp(PanelStage& stage) {
    stage.list().setProperty("follows", false);
    stage.list().setProperty("contentY", 0);
}

void study(PanelStage& stage) {
    stage.say("latest note");
    const QUuid note =
        stage.state->library().createBlankNote("Leaf optics of the shade", HubArea::Study);
    stage.state->studyNotes().loadNoteIntoStudyContext(
        *stage.state->library().savedNotes().find(note));
}

void capture(PanelStage& stage) {
    VorqMessage message;
    message.text = "Attached: Text capture";
    message.sent =
        SentText{"Leaves reflect green because neither pigment takes it up. In shade the "
                 "little light that is left is mostly green and far red.\n\nA leaf that "
                 "grows there is thinner and holds more chlorophyll.",
                 "Firefox"};
    stage.state->panel().messages().append(message);
    stage.answer("It says why **leaves are green**, and how shade leaves differ.");
    message.id = QUuid::createUuid();
    message.text = "What does far red mean?";
    stage.state->panel().messages().append(message);
}

void unfold(PanelStage& stage) {
    for (QQuickItem* sent : stage.findAll("SentText"))
        QMetaObject::invokeMethod(sent, "toggle");
}

void fail(PanelStage& stage) {
    VorqMessage message;
    message.role = MessageRole::Assistant;
    message.text = "The connection to Vorq broke off before the reply was complete.";
    message.canRetry = true;
    stage.say("Why is that so?");
    stage.state->panel().messages().append(message);
}

void signOut(PanelStage& stage) {
    stage.state->account().signOut();
}

void hover(PanelStage& stage, QPointF at) {
    QTest::mouseMove(stage.window.get(), {220, 640});
    QTest::mouseMove(stage.window.get(), at.toPoint());
    stage.settle(200);
}

void hoverReply(PanelStage& stage) {
    hover(stage, stage.find("ReplyView")->mapToScene({100, 40}));
}

// How a reply and what helps with it look close by.
QList<Shot> shotsOfReplies() {
    return {
        {"arabic", [](PanelStage& s) { s.answer(samples::arabic); }, hoverReply},
        {"code", [](PanelStage& s) { s.answer(samples::wideCode); },
         [](PanelStage& s) { hover(s, s.find("ReplyView")->mapToScene({100, 90})); }},
        {"focus", [](PanelStage& s) { s.answer(samples::wideCode); },
         [](PanelStage& s) { s.find("ReplyView")->forceActiveFocus(Qt::TabFocusReason); }},
        {"tip", greet,
         [](PanelStage& s) {
             hover(s, s.find("Composer")->mapToScene({26, 26}));
             s.settle(1000);
         }},
    };
}

void wantContrast(PanelStage& stage) {
    stage.look->setDesktop({.wantsHighContrast = true});
}

void openTray(PanelStage& stage) {
    stage.panel->tray()->setShown(true);
}

// For who sees little.
QList<Shot> shotsForAccess() {
    QList<Shot> list{
        {"contrast",
         [](PanelStage& s) {
             wantContrast(s);
             reply(s);
         },
         draft},
        {"contrast-top",
         [](PanelStage& s) {
             wantContrast(s);
             reply(s);
         },
         [](PanelStage& s) {
             scrollUp(s);
             s.settle(20);
             select(s);
         }},
        {"contrast-code",
         [](PanelStage& s) {
             wantContrast(s);
             s.answer(samples::wideCode);
         },
         [](PanelStage& s) { s.find("ReplyView")->forceActiveFocus(Qt::TabFocusReason); }},
        {"contrast-tray",
         [](PanelStage& s) {
             wantContrast(s);
             capture(s);
         },
         [](PanelStage& s) {
             openTray(s);
             s.find("TrayRow")->forceActiveFocus(Qt::TabFocusReason);
         }},
    };
    for (const auto& [name, scale] : {std::pair{"large", 1.25}, {"huge", 1.5}}) {
        const auto enlarge = [scale](PanelStage& s) { s.look->setTextScale(scale); };
        list += {name, reply, [=](PanelStage& s) {
                     enlarge(s);
                     draft(s);
                 }};
        list += {name + QByteArray("-tray"), capture, [=](PanelStage& s) {
                     enlarge(s);
                     unfold(s);
                     openTray(s);
                 }};
        list += {name + QByteArray("-top"), reply, [=](PanelStage& s) {
                     enlarge(s);
                     s.settle(20);
                     scrollUp(s);
                     s.settle(20);
                     select(s);
                 }};
        list += {name + QByteArray("-held"), signOut, [=](PanelStage& s) {
                     enlarge(s);
                     fail(s);
                     s.state->hotKeyContext().held().hold("not shown", "Chromium");
                 }};
    }
    return list;
}

// What became of a prompt, and what it needs.
QList<Shot> shotsOfTurns() {
    return {
        {"study", study},
        {"sent-folded", capture},
        {"sent", capture, unfold},
        {"failed",
         [](PanelStage& s) {
             greet(s);
             fail(s);
         }},
        {"signed-out",
         [](PanelStage& s) {
             signOut(s);
             greet(s);
         }},
        {"signed-out-waiting",
         [](PanelStage& s) {
             signOut(s);
             greet(s);
         },
         [](PanelStage& s) {
             static ScriptedBrowserSignIn browser;
             s.state->signIn().setBrowserSignIn(&browser);
             s.panel->signIn()->signInInBrowser();
         }},
        {"signed-out-failed",
         [](PanelStage& s) {
             signOut(s);
             greet(s);
             s.panel->setPrompt("Explain this");
         },
         [](PanelStage& s) {
             s.panel->signIn()->signIn();
             s.settle(10);
             s.localSignIn.answer(std::unexpected(
                 QString("vorq-gateway, the backend for this computer, is not installed.")));
         }},
    };
}

const QList<Shot>& shots() {
    static const QList<Shot> list =
        shotsOfTurns() + shotsOfClips() + shotsOfReplies() + shotsForAccess() +
        QList<Shot>{
            {"greeting", greet},
            {"reply", reply, draft},
            {"reply-top", reply, scrollUp},
            {"working", working},
            {"growing", growing},
            {"tray",
             [](PanelStage& s) {
                 greet(s);
                 reply(s);
             },
             [](PanelStage& s) { s.panel->tray()->setShown(true); }},
            {"tray-notes", reply,
             [](PanelStage& s) {
                 s.panel->tray()->setShown(true);
                 s.panel->tray()->setMode(AttachTrayState::Mode::Notes);
             }},
            {"selection", reply,
             [](PanelStage& s) {
                 scrollUp(s);
                 s.settle(20);
                 select(s);
             }},
            {"mixed",
             [](PanelStage& s) {
                 s.say("ما هو الفرق؟");
                 s.answer(samples::mixed);
             }},
            {"held",
             [](PanelStage& s) {
                 greet(s);
                 reply(s);
                 s.state->hotKeyContext().held().hold("not shown", "Chromium");
             }},
            {"draft", greet,
             [](PanelStage& s) { s.panel->setPrompt("One\nTwo\nThree\nFour\nFive\nSix\nSeven"); }},
            {"tinted",
             [](PanelStage& s) {
                 s.state->appearance().setPanelGlassStyle(PanelGlassStyle::Tinted);
                 greet(s);
                 reply(s);
             }},
            {"custom",
             [](PanelStage& s) {
                 s.state->appearance().setPanelBackgroundHex("#123230");
                 s.state->appearance().setPanelUserBlockHex("#1F6F63");
                 s.state->appearance().setPanelAssistantBlockHex("#F4E9D8");
                 greet(s);
                 reply(s);
             }},
        };
    return list;
}

void shoot(const Shot& shot, bool isDark, const QDir& folder) {
    PanelStage stage;
    stage.state->appearance().setPanelAppearance(isDark ? PanelAppearance::Current
                                                        : PanelAppearance::White);
    shot.prepare(stage);
    stage.show();
    const QColor backdrop(isDark ? "#2b3a55" : "#b4c6e0");
    stage.window->setColor(backdrop);
    stage.settle(100);
    if (shot.act) shot.act(stage);
    stage.settle(500);
    const QImage panel = stage.window->grabWindow();
    QImage picture(panel.size() + QSize(2 * margin, 2 * margin), QImage::Format_RGB32);
    picture.fill(backdrop);
    QPainter painter(&picture);
    painter.drawImage(margin, margin, panel);
    painter.end();
    const QString name =
        u"panel-%1-%2.png"_s.arg(QString::fromLatin1(shot.name), isDark ? "dark" : "light");
    if (!picture.save(folder.filePath(name))) qFatal("cannot write %s", qPrintable(name));
    std::printf("%s\n", qPrintable(name));
}

} // namespace
} // namespace vorq

int main(int argc, char** argv) {
    qputenv("QT_QUICK_BACKEND", "software");
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    vorq::prepareUi();
    const QStringList arguments = QGuiApplication::arguments();
    const QDir folder(arguments.value(1, "."));
    folder.mkpath(".");
    for (const vorq::Shot& shot : vorq::shots())
        for (const bool isDark : {true, false})
            if (arguments.size() < 3 || arguments.contains(shot.name))
                vorq::shoot(shot, isDark, folder);
    return 0;
}
