#include "shell/panel/PanelAnnouncer.h"
#include "doubles/panel/ConversationFixture.h"

#include <QSignalSpy>

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class PanelAnnouncerTest : public ConversationFixture {
  protected:
    [[nodiscard]] std::vector<std::string> announced() const {
        std::vector<std::string> sentences;
        for (const QList<QVariant>& announcement : m_announced)
            sentences.push_back(announcement[0].toString().toStdString());
        return sentences;
    }

    PanelAnnouncer m_announcer{state().panel().messages()};
    QSignalSpy m_announced{&m_announcer, &PanelAnnouncer::announced};
};

// The last block is typed only once the stream has ended.
TEST_F(PanelAnnouncerTest, SaysAllParagraphsOfAReplyThatWasStreamed) {
    submit("Explain");
    exchange().begin();
    sendText(exchange(), "## First\n\nSecond **paragraph**.\n\nThi");
    m_clock.settle();
    sendText(exchange(), "## First\n\nSecond **paragraph**.\n\nThird paragraph.");
    m_clock.settle();
    EXPECT_THAT(announced(), ElementsAre("Working..."));
    sendDone(exchange(), "## First\n\nSecond **paragraph**.\n\nThird paragraph.");
    advance(3s);
    EXPECT_FALSE(last().isTyping);
    EXPECT_THAT(announced(),
                ElementsAre("Working...", "First\nSecond paragraph.\nThird paragraph."));
}

TEST_F(PanelAnnouncerTest, SaysAReplyThoughTheNextTurnBeginsAtItsEnd) {
    submit("Explain");
    submit("Go on");
    reply(exchange(), threeParagraphs);
    advance(3s);
    const QString read = QString(threeParagraphs).replace("\n\n", "\n");
    EXPECT_THAT(announced(), ElementsAre("Working...", read.toStdString(), "Working..."));
}

} // namespace
} // namespace vorq
