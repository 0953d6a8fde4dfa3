#include "ui/native/Fonts.h"
#include "ui/reply/ReplyLayout.h"

#include <QGlyphRun>
#include <QRawFont>

#include <gmock/gmock.h>

namespace vorq {
namespace {

using Kind = AssistantReplyDocument::Kind;

constexpr double width = 380;

const ReplyTheme colors{Qt::black, Qt::blue, Qt::yellow};

ReplyLayout laidOut(const QString& text) {
    ReplyLayout layout;
    layout.setTheme(colors);
    layout.replace(0, 0, AssistantReplyDocument::blocks(text));
    layout.layOut(width, QDeadlineTimer(QDeadlineTimer::Forever));
    return layout;
}

TEST(ReplyStyle, TypesOfBlocks) {
    const auto expectType = [](Kind kind, double size, QFont::Weight weight, double gap) {
        const ReplyStyle::Type type = ReplyStyle::typeOf(kind);
        EXPECT_EQ(type.size, size);
        EXPECT_EQ(type.weight, weight);
        EXPECT_EQ(type.lineGap, gap);
    };
    expectType(Kind::Title, 16.5, QFont::Bold, 0);
    expectType(Kind::Section, 14.5, QFont::DemiBold, 0);
    expectType(Kind::Body, 14.5, QFont::Medium, 3.5);
    expectType(Kind::Bullets, 14.5, QFont::Medium, 3);
    expectType(Kind::Numbered, 14.5, QFont::Medium, 3);
    expectType(Kind::Quote, 14.5, QFont::Medium, 0);
    expectType(Kind::Code, 12.5, QFont::Normal, 2.5);
    expectType(Kind::Table, 13, QFont::Medium, 0);
    EXPECT_EQ(ReplyStyle::typeOf(Kind::Quote).opacity, 0.92);
    EXPECT_EQ(ReplyStyle::typeOf(Kind::Code).opacity, 0.92);
    EXPECT_TRUE(ReplyStyle::typeOf(Kind::Code).isMono);
}

TEST(ReplyStyle, GapsOfPairs) {
    using ReplyStyle::gapBetween;
    EXPECT_EQ(gapBetween(Kind::Title, Kind::Body), 6);
    EXPECT_EQ(gapBetween(Kind::Title, Kind::Bullets), 10);
    EXPECT_EQ(gapBetween(Kind::Section, Kind::Body), 6);
    EXPECT_EQ(gapBetween(Kind::Section, Kind::Bullets), 6);
    EXPECT_EQ(gapBetween(Kind::Section, Kind::Numbered), 6);
    EXPECT_EQ(gapBetween(Kind::Section, Kind::Code), 10);
    EXPECT_EQ(gapBetween(Kind::Body, Kind::Section), 14);
    EXPECT_EQ(gapBetween(Kind::Body, Kind::Divider), 12);
    EXPECT_EQ(gapBetween(Kind::Divider, Kind::Body), 12);
    EXPECT_EQ(gapBetween(Kind::Title, Kind::Divider), 12);
    EXPECT_EQ(gapBetween(Kind::Body, Kind::Body), 10);
}

TEST(ReplyStyle, StrongRunsTakeTheNextHeavierWeight) {
    using ReplyStyle::heavier;
    EXPECT_EQ(heavier(QFont::Bold), QFont::ExtraBold);
    EXPECT_EQ(heavier(QFont::ExtraBold), QFont::Black);
    EXPECT_EQ(heavier(QFont::Black), QFont::Black);
    EXPECT_EQ(heavier(QFont::DemiBold), QFont::Bold);
    EXPECT_EQ(heavier(QFont::Medium), QFont::DemiBold);
    EXPECT_EQ(heavier(QFont::Normal), QFont::DemiBold);
}

TEST(ReplyStyle, RunsOfALine) {
    const ReplyStyle::Type body = ReplyStyle::typeOf(Kind::Body);
    const auto formats =
        ReplyStyle::formatsOf(InlineSpans::parse(u"**s** *e* `c` [l](https://a.b)"), body, colors);
    ASSERT_EQ(formats.size(), 4);
    EXPECT_EQ(formats[0].format.font().weight(), QFont::DemiBold);
    EXPECT_TRUE(formats[1].format.font().italic());
    EXPECT_NEAR(formats[2].format.font().pointSizeF(), Fonts::points(13.5), 0.01);
    EXPECT_EQ(formats[2].format.font().family(), Fonts::mono(13, QFont::Medium).family());
    EXPECT_EQ(formats[2].format.font().weight(), QFont::Medium);
    EXPECT_EQ(formats[3].format.anchorHref(), "https://a.b");
}

TEST(ReplyLayout, BlocksStandUnderEachOtherWithTheirGaps) {
    const ReplyLayout layout = laidOut("# T\n\nBody.\n\n## S\n\n- a\n- b");
    ASSERT_EQ(layout.count(), 4);
    EXPECT_EQ(layout.blockRect(0).top(), 0);
    EXPECT_EQ(layout.blockRect(1).top(), layout.blockRect(0).bottom() + 6);
    EXPECT_EQ(layout.blockRect(2).top(), layout.blockRect(1).bottom() + 14);
    EXPECT_EQ(layout.blockRect(3).top(), layout.blockRect(2).bottom() + 6);
    EXPECT_EQ(layout.height(), layout.blockRect(3).bottom());
}

TEST(ReplyLayout, NoLeadingUnderTheLastLine) {
    const double one = laidOut("word").height();
    const double two = laidOut(QString("word ").repeated(14)).height();
    EXPECT_EQ(two, 2 * one + 3.5);
}

TEST(ReplyLayout, OnlyReplacedBlocksAreBuiltAnew) {
    ReplyLayout layout = laidOut("One.\n\nTwo.\n\nThree.");
    EXPECT_EQ(layout.builtBlocks(), 3);
    layout.replace(2, 1, AssistantReplyDocument::blocks(u"Four."));
    layout.layOut(width, QDeadlineTimer(QDeadlineTimer::Forever));
    EXPECT_EQ(layout.builtBlocks(), 4);
}

TEST(ReplyLayout, ALayoutThatIsInterruptedGoesOn) {
    ReplyLayout layout;
    layout.setTheme(colors);
    layout.replace(0, 0, AssistantReplyDocument::blocks(QString("word ").repeated(20000)));
    int slices = 0;
    double height = 0;
    while (!layout.layOut(width, QDeadlineTimer(0))) {
        EXPECT_GE(layout.height(), height);
        height = layout.height();
        ++slices;
    }
    EXPECT_GT(slices, 10);
}

// A screen reader builds blocks before their turn; a selection builds the last one.
TEST(ReplyLayout, AnInterruptedLayoutKeepsItsHeightWhereLaterBlocksAreBuilt) {
    ReplyLayout layout;
    layout.setTheme(colors);
    layout.replace(0, 0, AssistantReplyDocument::blocks(QString("A paragraph.\n\n").repeated(12)));
    ASSERT_EQ(layout.count(), 12);
    for (int row = 1; row < layout.count(); ++row)
        (void)layout.block(row);
    EXPECT_EQ(layout.end().block, 11);
    double height = 0;
    for (int set = 1; !layout.layOut(width, QDeadlineTimer(0)); ++set) {
        EXPECT_GE(layout.height(), height) << set;
        EXPECT_EQ(layout.blockAt(layout.blockRect(set - 1).center().y()), set - 1);
        height = layout.height();
    }
    EXPECT_GT(height, 200);
}

TEST(ReplyLayout, AWordOfAHundredThousandCharactersBreaksIntoFullLines) {
    const ReplyLayout layout = laidOut(QString(100000, u'm'));
    const double line = laidOut("m").height();
    const double lines = (layout.height() + 3.5) / (line + 3.5);
    const double perLine = 100000 / lines;
    EXPECT_GT(perLine, 20);
    EXPECT_LE(layout.naturalWidth(), width);
    // Lines break within pieces and between them alike.
    const ReplyLayout small = laidOut(QString(1000, u'm'));
    const double smallPerLine = 1000 / ((small.height() + 3.5) / (line + 3.5));
    EXPECT_NEAR(perLine, smallPerLine, 1.5);
}

TEST(ReplyLayout, SelectedTextCrossesBlocks) {
    const ReplyLayout layout = laidOut("One **two**.\n\n- a\n- b\n\n```\nx\ny\n```");
    EXPECT_EQ(layout.text({{0, 4}, {1, 1}}), "two.\na");
    EXPECT_EQ(layout.text({{}, layout.end()}), "One two.\na\nb\nx\ny");
}

TEST(ReplyLayout, PositionsAndRectanglesAgree) {
    const ReplyLayout layout = laidOut("One two three.\n\n- first item\n- second item");
    for (const ReplyPosition& position :
         {ReplyPosition{0, 0}, ReplyPosition{0, 5}, ReplyPosition{1, 3}, ReplyPosition{1, 14}}) {
        const QRectF cursor = layout.cursorRect(position);
        EXPECT_EQ(layout.positionAt(cursor.center()), position);
    }
    EXPECT_EQ(layout.positionAt({5000, 5000}), layout.end());
    EXPECT_EQ(layout.positionAt({-5, -5}), ReplyPosition{});
}

TEST(ReplyLayout, LinksAreFound) {
    const ReplyLayout layout = laidOut("See [here](https://a.example) now.");
    const QRectF link = layout.firstLineRect({{0, 4}, {0, 8}});
    EXPECT_EQ(layout.linkAt(link.center()), "https://a.example");
    EXPECT_EQ(layout.linkAt(link.center() + QPointF(60, 0)), "");
}

TEST(ReplyLayout, RightToLeftTextBeginsAtTheRightAndCodeAtTheLeft) {
    const ReplyLayout layout = laidOut("مرحبا بك.\n\n```\nשלום = 1\n```\n\n- عنصر\n- item");
    EXPECT_GT(layout.cursorRect({0, 0}).left(), width / 2);
    EXPECT_LT(layout.block(1).cursorRect(8).left(), width / 2);
    EXPECT_GT(layout.cursorRect({2, 0}).left(), width / 2);
    EXPECT_LT(layout.cursorRect({2, 5}).left(), width / 2);
}

TEST(ReplyLayout, CodeThatIsTooWideMovesSideways) {
    ReplyLayout layout = laidOut("```\n" + QString(200, u'x') + "\n```");
    EXPECT_TRUE(layout.scrollAt({20, 20}, 50));
    EXPECT_LT(layout.cursorRect({0, 0}).left(), 0);
    EXPECT_TRUE(layout.scrollAt({20, 20}, -500));
    EXPECT_EQ(layout.cursorRect({0, 0}).left(), ReplyStyle::platePadding);
    ReplyLayout narrow = laidOut("```\nx\n```");
    EXPECT_FALSE(narrow.scrollAt({20, 20}, 50));
}

TEST(ReplyLayout, ATabInCodeIsAsWideAsFourCharacters) {
    const ReplyLayout layout = laidOut("```\nabcdx\n\tx\na\tx\n```");
    const auto x = [&](qsizetype offset) { return layout.cursorRect({0, offset}).left(); };
    EXPECT_NEAR(x(7), x(4), 0.5);
    EXPECT_NEAR(x(11), x(4), 0.5);
}

TEST(ReplyLayout, EmojiAreDrawnInColour) {
    for (const QFont& font : {Fonts::sans(14.5, QFont::Medium), Fonts::mono(12.5, QFont::Normal)}) {
        QTextLayout text(QString::fromUtf8("a😀👍🏽"), font);
        text.beginLayout();
        text.createLine();
        text.endLayout();
        QStringList families;
        for (const QGlyphRun& run : text.glyphRuns())
            if (!run.rawFont().familyName().startsWith(font.family()))
                families += run.rawFont().familyName();
        families.removeDuplicates();
        EXPECT_EQ(families.join(", "), "Noto Color Emoji");
    }
}

TEST(ReplyLayout, AWideTableStaysWithinTheReply) {
    const QString cell = QString("word ").repeated(20);
    const ReplyLayout layout =
        laidOut("| a | b | c |\n|---|---|---|\n| " + cell + " | x | " + cell + " |");
    EXPECT_LT(layout.cursorRect(layout.end()).right(), width);
    EXPECT_GT(layout.height(), 100);
}

TEST(ReplyLayout, AWideColumnBreaksNoWordsOfTheOthers) {
    const ReplyLayout layout = laidOut("| Pigment | Peak | You see | Remarks |\n|---|---|---|---|\n"
                                       "| Chlorophyll b | 453, 642 nm | Yellow-green | " +
                                       QString("extraordinary ").repeated(20) + "|");
    const QString text = layout.text({{}, layout.end()});
    for (const char* word : {"Pigment", "Peak", "Chlorophyll", "Yellow", "green"}) {
        const auto at = static_cast<qsizetype>(text.indexOf(word));
        ASSERT_GE(at, 0) << word;
        const auto top = [&](qsizetype position) {
            return layout.cursorRect({.block = 0, .offset = position}).top();
        };
        EXPECT_EQ(top(at), top(at + static_cast<qsizetype>(strlen(word)) - 1)) << word;
    }
}

TEST(ReplyLayout, AnEmptyReplyHasNoHeight) {
    const ReplyLayout layout = laidOut("");
    EXPECT_EQ(layout.height(), 0);
    EXPECT_EQ(layout.positionAt({1, 1}), ReplyPosition{});
    EXPECT_EQ(layout.text({{}, layout.end()}), "");
}

} // namespace
} // namespace vorq
