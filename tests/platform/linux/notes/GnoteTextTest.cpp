#include "platform/linux/notes/GnoteText.h"

#include <gtest/gtest.h>

namespace vorq {

TEST(GnoteText, LeavesOutWhatXmlCannotHold) {
    EXPECT_EQ(gnote::storableText(u"a\r\nb\rc\vd\u2028e\u0085f\tg"), u"a\nb\nc\nd\ne\nf\tg");
    EXPECT_EQ(gnote::storableText(u"a\u0001b\u007Fc\uFFFEd"), u"abcd");
    EXPECT_EQ(gnote::storableText(u"\U0001F600"), u"\U0001F600");
    const char16_t lone[] = {u'a', 0xD83D, u'b', 0xDE00};
    EXPECT_EQ(gnote::storableText(QStringView(lone, 4)), u"a\uFFFDb\uFFFD");
    const char16_t nothing[] = {u'a', 0, u'b'};
    EXPECT_EQ(gnote::storableText(QStringView(nothing, 3)), u"ab");
}

TEST(GnoteText, MakesTitlesOneLine) {
    EXPECT_EQ(gnote::storableTitle(u" a\nb "), u"a b");
    EXPECT_EQ(gnote::storableTitle(u" \n\u0001"), u"Untitled");
}

TEST(GnoteText, AppendsWithinTheContent) {
    EXPECT_EQ(gnote::withAppended("<note-content v=\"1\">a<bold>b</bold></note-content>\n", u"<c>"),
              u"<note-content v=\"1\">a<bold>b</bold>\n\n&lt;c&gt;</note-content>\n");
    EXPECT_EQ(gnote::withAppended("<note-content v=\"1\"/>", u"c"),
              u"<note-content v=\"1\">\n\nc</note-content>");
    EXPECT_EQ(gnote::withAppended("<note-content>a\u0001b</note-content>", u"c"),
              u"<note-content>ab\n\nc</note-content>");
}

TEST(GnoteText, AppendsNothingToContentThatIsNotWellFormed) {
    EXPECT_EQ(gnote::withAppended("", u"c"), std::nullopt);
    EXPECT_EQ(gnote::withAppended("plain", u"c"), std::nullopt);
    EXPECT_EQ(gnote::withAppended("<note-content>a<b></note-content>", u"c"), std::nullopt);
    EXPECT_EQ(gnote::withAppended("<a/>rest", u"c"), std::nullopt);
}

} // namespace vorq
