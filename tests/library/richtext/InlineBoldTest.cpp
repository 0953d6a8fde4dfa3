#include "library/richtext/InlineBold.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace vorq {
namespace {

QStringList boldTexts(QStringView text) {
    QStringList texts;
    for (const InlineBoldSpan& span : inlineBoldSpans(text))
        texts += text.sliced(span.textStart(), span.length).toString();
    return texts;
}

} // namespace

TEST(InlineBold, FindsSpansFromLeftToRight) {
    EXPECT_EQ(boldTexts(u"a **b** c **d e**f"), (QStringList{"b", "d e"}));
    EXPECT_TRUE(boldTexts(u"").isEmpty());
    EXPECT_TRUE(boldTexts(u"no * bold").isEmpty());
}

TEST(InlineBold, TakesAtLeastOneCharacterAndAsFewAsWillDo) {
    EXPECT_TRUE(boldTexts(u"****").isEmpty());
    EXPECT_EQ(boldTexts(u"*****"), QStringList{"*"});
    EXPECT_EQ(boldTexts(u"**a***"), QStringList{"a"});
    EXPECT_EQ(boldTexts(u"***a**"), QStringList{"*a"});
    EXPECT_EQ(boldTexts(u"**\U0001F600**"), QStringList{u"\U0001F600"_qs});
}

TEST(InlineBold, StaysOnOneLine) {
    EXPECT_TRUE(boldTexts(u"**a\nb**").isEmpty());
    EXPECT_TRUE(boldTexts(u"**a\u2028b**").isEmpty());
    EXPECT_EQ(boldTexts(u"**a\n**b** c"), QStringList{"b"});
    EXPECT_EQ(boldTexts(u"**\n** x **y"), QStringList{" x "});
}

TEST(InlineBold, IsQuickOnMarkersThatNeverClose) {
    QString text = u"**\n"_qs.repeated(300'000) + u"* *"_qs.repeated(300'000);
    EXPECT_EQ(inlineBoldSpans(text).size(), 149'999U);
}

} // namespace vorq
