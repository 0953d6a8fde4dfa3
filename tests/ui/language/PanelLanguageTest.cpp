// The panel in a language whose texts are longer: all that it shows and says is translated, and
// there is room for it. What the user or a server would write has no letters here.

#include "doubles/ui/PanelStage.h"
#include "ui/language/ShownTexts.h"
#include "ui/reply/ReplyView.h"

#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

namespace vorq {
namespace {

struct PanelState {
    const char* name;
    std::function<void(PanelStage&)> prepare;
    std::function<void(PanelStage&)> act = {};
};

void converse(PanelStage& stage) {
    VorqMessage message;
    message.text = "1 + 1?";
    message.sent = SentText{"1 2 3\n4 5 6", "7"};
    stage.state->panel().messages().append(message);
    stage.answer("# 1\n\n2 3\n\n```\n4 + 5\n```\n\n> 6\n\n- 7\n- 8", false,
                 VorqFollowUp{"9?", {"10", "11"}});
}

void failTurn(PanelStage& stage) {
    VorqMessage message;
    message.role = MessageRole::Assistant;
    message.text = "12.";
    message.canRetry = true;
    stage.say("1?");
    stage.state->panel().messages().append(message);
}

void attachClips(PanelStage& stage) {
    PromptAttachment clip;
    clip.isDeepenSelection = true;
    clip.textContent = "1 2";
    stage.panel->attachments().append(clip);
    clip = {};
    clip.fileName = "3.4";
    clip.textContent = "5";
    stage.panel->attachments().append(clip);
}

// One that failed and one that is loading, with a prompt that waits.
void sendEarly(PanelStage& stage) {
    stage.panel->setPrompt("1?");
    stage.panel->intake()->attachFiles({QUrl::fromLocalFile("/1.2"), QUrl::fromLocalFile("/3.4")});
    stage.panel->send();
    stage.settle(50);
}

void failToAttach(PanelStage& stage) {
    sendEarly(stage);
    stage.reader.fail(0, "5 6.");
    stage.reader.finish(1);
}

void searchInVain(PanelStage& stage) {
    stage.panel->tray()->setShown(true);
    stage.panel->tray()->setMode(AttachTrayState::Mode::Notes);
    stage.settle(50);
    stage.panel->attachableNotes()->setSearch("3");
}

void selectInReply(PanelStage& stage) {
    converse(stage);
    stage.settle(50);
}

void openNotes(PanelStage& stage) {
    stage.panel->tray()->setShown(true);
    stage.panel->tray()->setMode(AttachTrayState::Mode::Notes);
}

void PrintTo(const PanelState& state, std::ostream* out) {
    *out << state.name;
}

const std::vector<PanelState>& panelStates() {
    static const std::vector<PanelState> states{
        {"greeting", [](PanelStage& s) { s.answer("1, 2…"); }},
        {"conversation", converse,
         [](PanelStage& s) {
             for (QQuickItem* sent : s.findAll("SentText"))
                 QMetaObject::invokeMethod(sent, "toggle");
         }},
        {"failed", failTurn},
        {"working",
         [](PanelStage& s) {
             s.say("1?");
             s.work();
         }},
        {"signed_out", [](PanelStage& s) { s.state->account().signOut(); }},
        {"attachments", converse, attachClips},
        {"loading", converse, sendEarly},
        {"not_attached", converse, failToAttach},
        {"not_found",
         [](PanelStage& s) { s.state->library().createBlankNote("1", HubArea::Study); },
         searchInVain},
        {"dropping", converse,
         [](PanelStage& s) { s.find("DropZone")->setProperty("isWelcoming", true); }},
        {"tray", converse, [](PanelStage& s) { s.panel->tray()->setShown(true); }},
        {"no_notes", converse, openNotes},
        {"notes",
         [](PanelStage& s) {
             s.state->library().createBlankNote("1", HubArea::Study);
             s.state->library().createBlankNote("2", HubArea::Study);
         },
         openNotes},
        {"held", converse,
         [](PanelStage& s) { s.state->hotKeyContext().held().hold("1 2 3", "4"); }},
        {"held_of_unknown", converse,
         [](PanelStage& s) { s.state->hotKeyContext().held().hold("1 2 3", ""); }},
        {"selection", selectInReply,
         [](PanelStage& s) {
             qobject_cast<ReplyView*>(s.find("ReplyView"))->select({1, 0}, {1, 2});
         }},
        {"nothing_captured", converse,
         [](PanelStage& s) {
             s.capture.names[7] = "8";
             const auto done = s.state->hotKeyContext().submitHotKeyContext(7, QString(), {});
             s.settle(50);
         }},
        {"accessibility_off", converse,
         [](PanelStage& s) { s.state->permissions().adviseToGrantAgain(); }},
    };
    return states;
}

class PanelLanguageTest : public testing::TestWithParam<PanelState> {
  protected:
    PanelLanguageTest() { QAccessible::setActive(true); }
    ~PanelLanguageTest() override { QAccessible::setActive(false); }

    void show() {
        QObject::connect(stage.panel.get(), &PanelViewModel::announced,
                         [this](const QString& sentence) { announced += sentence; });
        GetParam().prepare(stage);
        stage.show();
        stage.settle(100);
        if (GetParam().act) GetParam().act(stage);
        stage.settle(600);
    }

    TestLanguage language;
    PanelStage stage;
    QStringList announced;
};

TEST_P(PanelLanguageTest, AllThatIsShownAndSaidIsTranslated) {
    show();
    const QStringList texts = shownTexts(*stage.window) + announced;
    EXPECT_EQ(TestLanguage::foreign(texts), "");
    EXPECT_TRUE(texts.join(' ').contains(u'«'));
}

TEST_P(PanelLanguageTest, NoTextIsCutOff) {
    show();
    EXPECT_EQ(cutTexts(*stage.window), "");
}

INSTANTIATE_TEST_SUITE_P(, PanelLanguageTest, testing::ValuesIn(panelStates()),
                         [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace vorq
