// What the user pastes, of a clipboard whose owner may hang.

#include "doubles/panel/ClipsFixture.h"

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class PastingTest : public ClipsFixture {
  protected:
    PastingTest() {
        QObject::connect(model().intake(), &AttachmentIntake::textPasted, &model(), [this] {
            ++m_texts;
            model().setPrompt(model().prompt() + "pasted");
        });
    }
    void hold(const std::vector<std::pair<QByteArray, QByteArray>>& forms) {
        m_pasteboard.held.clear();
        for (const auto& [name, bytes] : forms)
            m_pasteboard.held.push_back({.name = name, .bytes = bytes, .type = name});
    }
    void paste() {
        EXPECT_TRUE(model().intake()->attachFromClipboard());
        m_clock.settle();
    }
    [[nodiscard]] std::string reason(int row) {
        return clips().index(row).data(AttachmentList::ReasonRole).toString().toStdString();
    }

    int m_texts = 0;
};

TEST_F(PastingTest, APictureHasItsClipWhileItComes) {
    hold({{"TARGETS", ""}, {"image/png", "\x89PNG"}, {"text/html", "<img>"}});
    m_pasteboard.hangingForm = "image/png";
    paste();
    EXPECT_THAT(shown(), ElementsAre("Pasted image.png…"));
    EXPECT_THAT(m_reader.readings(), IsEmpty());
    m_clock.advance(30s);
    EXPECT_THAT(shown(), ElementsAre("Pasted image.png!"));
    EXPECT_EQ(reason(0), "The program that it was copied in does not hand it over.");
    m_pasteboard.hangingForm.clear();
    clips().retry(0);
    m_clock.settle();
    ASSERT_EQ(m_reader.readings().size(), 1U);
    EXPECT_EQ(m_reader.readings()[0]->picture, "\x89PNG");
    finish(0);
    EXPECT_THAT(shown(), ElementsAre("Pasted image.png"));
}

TEST_F(PastingTest, APictureThatIsAnnouncedAndEmptyHasFailed) {
    hold({{"image/png", ""}});
    paste();
    EXPECT_THAT(shown(), ElementsAre("Pasted image.png!"));
}

TEST_F(PastingTest, FilesOfEitherFormAreAttached) {
    hold({{"text/uri-list", "file:///a.txt\r\nhttps://example.org/b.txt\r\n"},
          {"text/plain", "/a.txt"}});
    paste();
    EXPECT_THAT(shown(), ElementsAre("a.txt…"));
    hold({{"x-special/gnome-copied-files", "copy\nfile:///b.txt\nfile:///c.txt"}});
    paste();
    EXPECT_THAT(shown(), ElementsAre("a.txt…", "b.txt…", "c.txt…"));
}

TEST_F(PastingTest, APictureOfAPageIsTakenAndItsAddressIsNot) {
    hold({{"text/uri-list", "https://example.org/a.png"}, {"image/png", "\x89PNG"}});
    paste();
    EXPECT_THAT(shown(), ElementsAre("Pasted image.png…"));
    EXPECT_EQ(model().notice(), "");
}

TEST_F(PastingTest, APictureOfCopiedWordsIsLeftToTheWords) {
    for (const char* text : {"UTF8_STRING", "STRING", "text/plain;charset=utf-8"}) {
        hold({{"image/png", "\x89PNG"}, {text, "words"}});
        paste();
    }
    EXPECT_EQ(m_texts, 3);
    EXPECT_EQ(clips().count(), 0);
}

TEST_F(PastingTest, WhatIsPastedTwiceIsThereTwice) {
    hold({{"image/png", "\x89PNG"}});
    EXPECT_TRUE(model().intake()->attachFromClipboard());
    paste();
    EXPECT_THAT(shown(), ElementsAre("Pasted image.png…", "Pasted image.png…"));
}

TEST_F(PastingTest, AnOwnerThatDoesNotAnswerIsANotice) {
    hold({{"UTF8_STRING", "words"}});
    m_pasteboard.hangs = true;
    paste();
    EXPECT_EQ(model().notice(), "");
    m_clock.advance(3s);
    EXPECT_EQ(model().notice(), "The program that it was copied in does not hand it over.");
    EXPECT_EQ(m_texts, 0);
    m_pasteboard.hangs = false;
    paste();
    EXPECT_EQ(m_texts, 1);
}

TEST_F(PastingTest, WhatIsSentAtOnceGoesOutWithWhatWasPasted) {
    hold({{"UTF8_STRING", "words"}});
    EXPECT_TRUE(model().intake()->attachFromClipboard());
    model().send();
    EXPECT_THAT(said(), IsEmpty());
    m_clock.settle();
    EXPECT_THAT(said(), ElementsAre("pasted"));
}

TEST_F(PastingTest, WhatIsSentStaysADraftWhenThePasteGetsNoAnswer) {
    m_pasteboard.hangs = true;
    model().setPrompt("Why?");
    paste();
    send();
    m_clock.advance(3s);
    EXPECT_THAT(said(), IsEmpty());
    EXPECT_EQ(model().prompt(), "Why?");
    send();
    EXPECT_THAT(said(), ElementsAre("Why?"));
}

} // namespace
} // namespace vorq
