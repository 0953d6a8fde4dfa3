#include "shell/panel/PanelOutlet.h"

#include "panel/MessageList.h"

#include <QClipboard>
#include <QGuiApplication>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class PanelOutletTest : public testing::Test {
  protected:
    void say(MessageRole role, const QString& text) {
        VorqMessage message;
        message.role = role;
        message.text = text;
        messages.append(message);
    }
    static QString copied() { return QGuiApplication::clipboard()->text(); }

    MessageList messages;
    PanelOutlet outlet{messages};
};

TEST_F(PanelOutletTest, TheLastReplyIsCopiedAsFarAsItIsThere) {
    outlet.copyText("before");
    EXPECT_FALSE(outlet.copyLastReply());
    say(MessageRole::Assistant, u"Hello 👋, Vorq here…"_s);
    say(MessageRole::User, "a question");
    EXPECT_FALSE(outlet.copyLastReply()) << "the greeting is no reply";
    EXPECT_EQ(copied(), "before");
    say(MessageRole::Assistant, "first");
    say(MessageRole::Assistant, "second");
    messages.append(VorqMessage::placeholder());
    EXPECT_TRUE(outlet.copyLastReply());
    EXPECT_EQ(copied(), "second");
}

} // namespace
} // namespace vorq
