#include "rendering/InlineSpans.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Span = InlineSpans::Span;

// "bold[2+3]s" for a span of each mark.
QString shown(const InlineSpans& parsed) {
    QString list;
    for (const Span& span : parsed.spans) {
        list += parsed.text.mid(span.start, span.length) + u'=';
        if (span.isStrong) list += u's';
        if (span.isEmphasized) list += u'e';
        if (span.isCode) list += u'c';
        if (span.isStruck) list += u'd';
        if (!span.link.isEmpty()) list += u'(' + span.link + u')';
        list += u' ';
    }
    return list.trimmed();
}

struct Case {
    QString source;
    QString text;
    QString spans;
};

TEST(InlineSpans, MarksBecomeSpans) {
    const QList<Case> cases = {
        {"plain", "plain", ""},
        {"a **b** c", "a b c", "b=s"},
        {"*x*", "x", "x=e"},
        {"_x_", "x", "x=e"},
        {"***x***", "x", "x=se"},
        {"**a *b* c**", "a b c", "a =s b=se  c=s"},
        {"run `git log` now", "run git log now", "git log=c"},
        {"**`x`**", "x", "x=sc"},
        {"~~old~~", "old", "old=d"},
        {"[Vorq](https://vorq.example/a?b=1&amp;c=2)", "Vorq",
         "Vorq=(https://vorq.example/a?b=1&c=2)"},
        {"<https://a.example>", "https://a.example", "https://a.example=(https://a.example)"},
        {"a &amp; b &#8212; c", "a & b — c", ""},
        {"**\"quoted\"**", "\"quoted\"", "\"quoted\"=s"},
    };
    for (const Case& c : cases) {
        const InlineSpans parsed = InlineSpans::parse(c.source);
        EXPECT_EQ(parsed.text, c.text) << qPrintable(c.source);
        EXPECT_EQ(shown(parsed), c.spans) << qPrintable(c.source);
    }
}

TEST(InlineSpans, MalformedMarksShowAsTyped) {
    for (const QString source : {"**open", "a * b * c", "`tick", "[no](", "snake_case_name",
                                 "1 < 2", "&bogus;", "](", "**", "<b>bold</b>", "foo&", "back\\"}) {
        const InlineSpans parsed = InlineSpans::parse(source);
        EXPECT_EQ(parsed.text, source);
        EXPECT_TRUE(parsed.spans.isEmpty()) << qPrintable(source);
    }
}

TEST(InlineSpans, BlockMarksAreNoMarks) {
    for (const QString source : {"# not a heading *", "- item _", "> quote *", "1. one *", "---*",
                                 "    indented *", "```*", "~~~", "<div>*"}) {
        const InlineSpans parsed = InlineSpans::parse(source);
        EXPECT_EQ(parsed.text, source);
    }
}

TEST(InlineSpans, WhiteSpaceIsKept) {
    EXPECT_EQ(InlineSpans::parse(u"  a   *b*  ").text, u"  a   b  "_s);
}

TEST(InlineSpans, LineBreaksBecomeLineSeparatorsAndMarksReachAcross) {
    const InlineSpans parsed = InlineSpans::parse(u"**a\nb**");
    EXPECT_EQ(parsed.text, u"a\u2028b"_s);
    EXPECT_EQ(parsed.spans.size(), 1);
}

TEST(InlineSpans, EscapedMarksLoseTheirBackslash) {
    EXPECT_EQ(InlineSpans::parse(u"\\*a\\*").text, u"*a*"_s);
}

TEST(InlineSpans, CharactersBeyondTheBasicPlaneKeepTheirPositions) {
    const InlineSpans parsed = InlineSpans::parse(u"👋 **hi** 👋");
    ASSERT_EQ(parsed.spans.size(), 1);
    EXPECT_EQ(parsed.text.mid(parsed.spans[0].start, parsed.spans[0].length), u"hi"_s);
}

TEST(InlineSpans, GuardsInTheTextStay) {
    EXPECT_EQ(InlineSpans::parse(u"‡ *a* ‡").text, u"‡ a ‡"_s);
}

TEST(InlineSpans, ZerosDoNotEndTheText) {
    QString text = u"a*b*c"_s;
    text[0] = QChar(u'\0');
    EXPECT_EQ(InlineSpans::parse(text).text.size(), 3);
}

TEST(InlineSpans, HugeUnbalancedMarksEnd) {
    const QString stars = QString(100000, u'*') + QString(100000, u'[') + QString(1000, u'`');
    EXPECT_EQ(InlineSpans::parse(stars).text, stars);
}

} // namespace
} // namespace vorq
