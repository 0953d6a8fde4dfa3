#include "platform/linux/atspi/AtSpiPlaces.h"

#include "doubles/platform/AccessibleTreeFixture.h"
#include "platform/linux/atspi/AtSpiSelectedPieces.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

constexpr auto rootPane = static_cast<std::uint32_t>(atspi::Role::RootPane);
constexpr auto secret = static_cast<std::uint32_t>(atspi::Role::PasswordText);

class AtSpiPlacesTest : public AccessibleTreeTest {
  protected:
    [[nodiscard]] AtSpiPlaces places() { return {bus, toolkit, {}, patience}; }
    [[nodiscard]] std::optional<QRectF> bounds(const QString& path, int start, int end) {
        return told([&] { return places().bounds(at(path), {.start = start, .end = end}); });
    }
    [[nodiscard]] QPointF shift(const QString& path) {
        return told([&] { return places().shift(at(path)); });
    }
    [[nodiscard]] bool misplaces(const QString& path) {
        return told([&] { return places().misplacesParagraphs(at(path), element(path).text); });
    }
    [[nodiscard]] bool isInPixels(const QString& path) {
        return told([&] { return places().isInPixels(at(path)); });
    }
    // Answers the first questions for bounds without a size.
    void answerLate(int questions) {
        tree.instead = [left = questions](const QDBusMessage& call) mutable {
            if (call.member() != "GetRangeExtents" || left-- <= 0) return QDBusMessage();
            return call.createReply(QVariantList{-1, -1, 0, 0});
        };
    }
    [[nodiscard]] qsizetype questions() const { return tree.calls().count("/one.GetRangeExtents"); }

    AtSpiPlaces::Patience patience;
};

TEST_F(AtSpiPlacesTest, GiveTheBoundsOfAStretch) {
    element("/one").bounds[{2, 5}] = {10, 20, 30, 14};
    EXPECT_THAT(bounds("/one", 2, 5), Optional(QRectF(10, 20, 30, 14)));
    EXPECT_EQ(bounds("/one", 0, 1), std::nullopt);
    EXPECT_EQ(bounds("/none", 0, 1), std::nullopt);
}

TEST_F(AtSpiPlacesTest, WaitForAToolkitThatFindsOutLate) {
    element("/one").bounds[{2, 5}] = {10, 20, 30, 14};
    answerLate(4);
    EXPECT_THAT(bounds("/one", 2, 5), Optional(QRectF(10, 20, 30, 14)));

    // All questions of one capture share the time.
    patience.left = std::chrono::milliseconds(10);
    answerLate(4);
    EXPECT_EQ(bounds("/one", 2, 5), std::nullopt);
    EXPECT_EQ(patience.left, std::chrono::milliseconds(0));
}

TEST_F(AtSpiPlacesTest, AskOthersTwiceAtMost) {
    toolkit = atSpiToolkit(u"gtk", u"editor");
    element("/one");
    EXPECT_EQ(bounds("/one", 2, 5), std::nullopt);
    EXPECT_EQ(questions(), 2);
}

TEST_F(AtSpiPlacesTest, KnowHowFarTheMenuPushesContentsDown) {
    toolkit = atSpiToolkit(u"GTK", u"soffice");
    element("/frame").children = QStringList{"/pane"};
    element("/frame").place = {0, 19, 1280, 881};
    element("/pane").children = QStringList{"/one"};
    element("/pane").role = rootPane;
    element("/pane").place = {0, 19, 1280, 856};
    element("/one").place = {207, 233, 793, 15};
    EXPECT_EQ(shift("/one"), QPointF(0, 25));

    // Without a menu.
    element("/pane").place = {0, 19, 1280, 881};
    EXPECT_EQ(shift("/one"), QPointF());
    // Of another window.
    element("/pane").place = {400, 19, 300, 100};
    EXPECT_EQ(shift("/one"), QPointF());
    toolkit = atSpiToolkit(u"gtk", u"editor");
    EXPECT_EQ(shift("/one"), QPointF());
}

TEST_F(AtSpiPlacesTest, TellWhereParagraphsAreAllInOnePlace) {
    toolkit = atSpiToolkit(u"Qt", u"editor");
    element("/one").text = "\nfirst\n\nsecond";
    element("/one").bounds = {{{1, 2}, {10, 20, 8, 14}}, {{8, 9}, {10, 20, 8, 14}}};
    EXPECT_TRUE(misplaces("/one"));

    element("/one").bounds[{8, 9}] = {10, 48, 8, 14};
    EXPECT_FALSE(misplaces("/one"));
    element("/one").text = "first\n";
    EXPECT_FALSE(misplaces("/one"));
}

TEST_F(AtSpiPlacesTest, ArePixelsOnAPageOfOneToolkit) {
    toolkit = atSpiToolkit(u"Chromium", u"Chromium");
    element("/frame").children = QStringList{"/page", "/address"};
    element("/page").role = static_cast<std::uint32_t>(atspi::Role::Page);
    element("/page").children = QStringList{"/one"};
    element("/one");
    element("/address");
    EXPECT_TRUE(isInPixels("/one"));
    EXPECT_TRUE(isInPixels("/page"));
    EXPECT_FALSE(isInPixels("/address"));
    toolkit = atSpiToolkit(u"Gecko", u"Firefox");
    EXPECT_FALSE(isInPixels("/one"));
}

class AtSpiSelectedPiecesTest : public AccessibleTreeTest {
  protected:
    [[nodiscard]] std::vector<QString> pieces(const QString& path) {
        return told([&] {
            const AtSpiSelection selection(bus, toolkit, {});
            std::vector<QString> names;
            for (const auto& [element, span] : AtSpiSelectedPieces(selection).of(at(path)))
                names.push_back(u"%1 %2-%3"_s.arg(element.path).arg(span.start).arg(span.end));
            return names;
        });
    }
};

TEST_F(AtSpiSelectedPiecesTest, AreTheSelectionsOfAPlainText) {
    textOf("/one", "some words", 5, 10);
    EXPECT_THAT(pieces("/one"), ElementsAre("/one 5-10"));
    element("/one").selections.clear();
    EXPECT_THAT(pieces("/one"), IsEmpty());
}

TEST_F(AtSpiSelectedPiecesTest, AreWhatEachObjectOfAPageHasOfIt) {
    textOf("/page", "\uFFFC\uFFFC\uFFFC", 0, 3).links = QStringList{"/first", "/middle", "/last"};
    textOf("/first", "first paragraph", 6, 15);
    element("/middle").text = "picture";
    textOf("/last", "the \uFFFC ends", 0, 7).links = QStringList{"/link"};
    EXPECT_THAT(pieces("/page"), ElementsAre("/first 6-15", "/page 1-2", "/last 0-7"));
}

TEST_F(AtSpiSelectedPiecesTest, AreFoundInObjectsOfObjects) {
    textOf("/page", "\uFFFC", 0, 1).links = QStringList{"/one"};
    textOf("/one", "see \uFFFC", 2, 5).links = QStringList{"/link"};
    textOf("/link", "the page", 0, 3);
    EXPECT_THAT(pieces("/page"), ElementsAre("/one 2-4", "/link 0-3"));
}

TEST_F(AtSpiSelectedPiecesTest, ArePicturesAsWholes) {
    textOf("/page", "\uFFFCab", 0, 2).links = QStringList{"/picture"};
    element("/picture").hasText = false;
    EXPECT_THAT(pieces("/page"), ElementsAre("/page 0-1", "/page 1-2"));
}

TEST_F(AtSpiSelectedPiecesTest, LeaveOutWhatIsMerelyTouched) {
    textOf("/page", "\uFFFC\uFFFC", 0, 2).links = QStringList{"/first", "/second"};
    whole("/first", "first");
    element("/second").text = "second";
    EXPECT_THAT(pieces("/page"), ElementsAre("/first 0-5"));
}

TEST_F(AtSpiSelectedPiecesTest, NeverAskForAPassword) {
    textOf("/page", "\uFFFC\uFFFC\uFFFC", 0, 3).links = QStringList{"/first", "/secret", "/last"};
    whole("/first", "first");
    whole("/secret", "geheim").role = secret;
    whole("/last", "last");
    EXPECT_THAT(pieces("/page"), ElementsAre("/first 0-5", "/page 1-2", "/last 0-4"));
    element("/page").selections = {{1, 2}};
    EXPECT_THAT(pieces("/page"), IsEmpty());
    EXPECT_FALSE(tree.calls().contains("/secret.GetText"));
    EXPECT_FALSE(tree.calls().contains("/secret.GetSelection"));
}

TEST_F(AtSpiSelectedPiecesTest, EndOnAPageThatContainsItself) {
    textOf("/page", "\uFFFCa", 0, 2).links = QStringList{"/page"};
    EXPECT_THAT(pieces("/page"), testing::SizeIs(testing::Lt(64)));
}

TEST_F(AtSpiSelectedPiecesTest, AskNothingOfWhatIsBetweenBothEnds) {
    textOf("/page", QString(200, QChar(0xFFFC)), 0, 200);
    for (int i = 0; i < 200; ++i)
        element("/page").links += "/p" + QString::number(i);
    whole("/p0", "text");
    whole("/p199", "text");
    EXPECT_THAT(pieces("/page"), ElementsAre("/p0 0-4", "/page 1-199", "/p199 0-4"));
}

} // namespace
} // namespace vorq
