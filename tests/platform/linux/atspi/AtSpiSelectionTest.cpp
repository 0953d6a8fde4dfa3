#include "platform/linux/atspi/AtSpiSelection.h"

#include "doubles/platform/AccessibleTreeFixture.h"
#include "platform/linux/atspi/AtSpiApplications.h"
#include "platform/linux/atspi/AtSpiWalk.h"

#include <QTest>

#include <gmock/gmock.h>

#include <limits>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::IsEmpty;
using testing::Optional;

constexpr auto password = static_cast<std::uint32_t>(atspi::Role::PasswordText);
constexpr int farthest = std::numeric_limits<int>::max();

class AtSpiSelectionTest : public AccessibleTreeTest {
  protected:
    [[nodiscard]] std::optional<QString> selected(const QString& path) {
        return told([&] { return AtSpiSelection(bus, toolkit, {}).selectedText(at(path)); });
    }
    [[nodiscard]] std::optional<QString> value(const QString& path) {
        return told([&] { return AtSpiSelection(bus, toolkit, {}).value(at(path)); });
    }
};

TEST_F(AtSpiSelectionTest, ReadsWhatIsSelected) {
    textOf("/one", "some words", 5, 10);
    EXPECT_THAT(selected("/one"), Optional(QString("words")));
    EXPECT_THAT(value("/one"), Optional(QString("some words")));
}

// Toolkits complain in the log of the application when they are asked for a text that is not there.
TEST_F(AtSpiSelectionTest, AsksOnlyElementsWithTextForTheirs) {
    element("/button").hasText = false;
    EXPECT_EQ(selected("/button"), std::nullopt);
    EXPECT_EQ(value("/button"), std::nullopt);
    EXPECT_THAT(tree.misplaced(), IsEmpty());
}

TEST_F(AtSpiSelectionTest, AWalkAsksOnlyElementsWithTextForTheirs) {
    element("/window").hasText = false;
    element("/window").children = QStringList{"/button", "/text"};
    element("/button").hasText = false;
    whole("/text", "words");
    const auto selections = told([&] {
        AtSpiWalk walk(bus, {});
        (void)walk.facts(at("/window"));
        walk.announce(at("/button"));
        walk.announce(at("/text"));
        return std::vector{walk.facts(at("/button")).selections,
                           walk.facts(at("/text")).selections};
    });
    EXPECT_THAT(selections, testing::ElementsAre(std::nullopt, Optional(1)));
    EXPECT_THAT(tree.misplaced(), IsEmpty());
}

TEST_F(AtSpiSelectionTest, NeverAsksForTheTextOfAPassword) {
    whole("/word", "secret").role = password;
    EXPECT_THAT(selected("/word"), Optional(QString()));
    EXPECT_EQ(value("/word"), std::nullopt);
    EXPECT_THAT(tree.calls(), testing::Not(testing::Contains(QString("/word.GetText"))));
}

TEST_F(AtSpiSelectionTest, DoesNotReadWhatMayBeAPassword) {
    whole("/word", "secret").role = password;
    tree.instead = [](const QDBusMessage& call) {
        return call.member() == "GetRole" ? call.createErrorReply(QDBusError::InternalError, "busy")
                                          : QDBusMessage();
    };
    EXPECT_EQ(selected("/word"), std::nullopt);
    EXPECT_EQ(value("/word"), std::nullopt);
    EXPECT_THAT(tree.calls(), testing::Not(testing::Contains(QString("/word.GetText"))));
}

TEST_F(AtSpiSelectionTest, ReadsAPageThroughItsObjects) {
    whole("/page", u"\uFFFC\uFFFC"_s).links = QStringList{"/first", "/second"};
    textOf("/first", "one two", 4, 7);
    textOf("/second", "three", 0, 5);
    EXPECT_THAT(selected("/page"), Optional(QString("two\nthree")));
}

TEST_F(AtSpiSelectionTest, SetsObjectsAsTheirPageDoes) {
    whole("/page", u"E=mc\uFFFC, press \uFFFC now\uFFFCend"_s).links =
        QStringList{"/raised", "/button", "/block"};
    whole("/raised", "2").attributes = {{"display", "inline"}};
    whole("/button", "Go").attributes = {{"display", "inline-block"}};
    whole("/block", "apart").attributes = {{"display", "block"}};
    EXPECT_THAT(selected("/page"), Optional(QString("E=mc2, press Go now\napart\nend")));
}

TEST_F(AtSpiSelectionTest, SetsParagraphsApart) {
    const auto paragraph = [&](const QString& path, const QString& text) {
        whole(path, text).role = static_cast<std::uint32_t>(atspi::Role::Paragraph);
        element(path).attributes = {{"display", "block"}};
    };
    whole("/page", u"\uFFFC\uFFFC\uFFFC\uFFFC"_s).links =
        QStringList{"/title", "/one", "/two", "/item"};
    whole("/title", "Title");
    paragraph("/one", "one\n");
    paragraph("/two", "two");
    whole("/item", u"12. \uFFFC\uFFFC"_s).links = QStringList{"/three", "/four"};
    element("/item").attributes = {{"display", "list-item"}};
    paragraph("/three", "three");
    paragraph("/four", "four");
    EXPECT_THAT(selected("/page"), Optional(QString("Title\n\none\n\ntwo\n\n12. three\n\nfour")));
}

TEST_F(AtSpiSelectionTest, SetsTheItemsOfAList) {
    whole("/list", u"\uFFFC\uFFFC"_s).links = QStringList{"/first", "/second"};
    whole("/first", u"\u2022 \uFFFC"_s).links = QStringList{"/block"};
    whole("/second", u"\u2022 \uFFFC\uFFFC"_s).links = QStringList{"/link", "/block"};
    for (const QString& path : {"/first", "/second"})
        element(path).attributes = {{"display", "list-item"}};
    whole("/block", "block").attributes = {{"display", "block"}};
    whole("/link", "link").attributes = {{"display", "inline"}};
    EXPECT_THAT(selected("/list"), Optional(u"\u2022 block\n\u2022 link\nblock"_s));
}

TEST_F(AtSpiSelectionTest, SetsTheCellsOfARowApartByTabs) {
    whole("/table", u"\uFFFC\uFFFC"_s).links = QStringList{"/head", "/row"};
    whole("/head", u"\uFFFC\uFFFC\uFFFC"_s).links = QStringList{"/a", "/b", "/c"};
    whole("/row", u"\uFFFC\uFFFC\uFFFC"_s).links = QStringList{"/d", "/none", "/f"};
    for (const QString& name : {"a", "b", "c", "d", "f"})
        whole("/" + name, name).attributes = {{"display", "table-cell"}};
    element("/none").attributes = {{"display", "table-cell"}};
    for (const QString& path : {"/head", "/row"})
        element(path).attributes = {{"display", "table-row"}};
    EXPECT_THAT(selected("/table"), Optional(QString("a\tb\tc\nd\t\tf")));
}

TEST_F(AtSpiSelectionTest, LeavesWhatIsTypedIntoTheFieldsOfAPage) {
    whole("/page", u"before\uFFFCafter"_s).links = QStringList{"/field"};
    whole("/field", "typed").attributes = {{"display", "inline-block"}, {"tag", "input"}};
    EXPECT_THAT(selected("/page"), Optional(QString("beforeafter")));
    EXPECT_THAT(selected("/field"), Optional(QString("typed")));
}

TEST_F(AtSpiSelectionTest, ReadsNoSelectionThatOtherParagraphsHaveAPartOf) {
    toolkit = atSpiToolkit(u"gtk", u"soffice");
    element("/document").children = QStringList{"/first", "/caret"};
    element("/caret").text = "second";
    element("/first").text = "first";
    const auto spans = [&](const QString& path) {
        return told([&] { return AtSpiSelection(bus, toolkit, {}).spans(at(path)).has_value(); });
    };
    EXPECT_TRUE(spans("/caret")) << "nothing is selected anywhere";
    whole("/first", "first");
    EXPECT_FALSE(spans("/caret")) << "the selection ends before the first character";
    EXPECT_TRUE(spans("/first"));
    whole("/caret", "second");
    EXPECT_FALSE(spans("/first"));
}

TEST_F(AtSpiSelectionTest, ReadsAllThatIsSelectedInAShape) {
    toolkit = atSpiToolkit(u"gtk", u"soffice");
    element("/slide").children = QStringList{"/shape"};
    element("/slide").place = {0, 0, 800, 600};
    element("/shape").children = QStringList{"/a", "/b", "/c", "/d"};
    element("/shape").role = static_cast<std::uint32_t>(atspi::Role::Panel);
    element("/shape").place = {100, 100, 300, 200};
    textOf("/a", "first", 2, 5);
    element("/b").text.clear();
    textOf("/c", "third", 0, 2);
    element("/d").text = "fourth";
    for (const QString& path : {"/a", "/c"})
        EXPECT_THAT(selected(path), Optional(QString("rst\n\nth")));

    element("/shape").place = {100, 500, 300, 200};
    EXPECT_EQ(selected("/c"), std::nullopt) << "some of it may not be in view";
    element("/shape").place = {100, 100, 300, 200};
    element("/shape").role = 0;
    EXPECT_EQ(selected("/c"), std::nullopt) << "a page";
}

TEST_F(AtSpiSelectionTest, ReadsNoCellThatIsSelectedWhole) {
    toolkit = atSpiToolkit(u"gtk", u"soffice");
    element("/cell").children = QStringList{"/text"};
    element("/cell").role = static_cast<std::uint32_t>(atspi::Role::TableCell);
    whole("/text", "words");
    EXPECT_EQ(selected("/text"), std::nullopt);
    textOf("/text", "words", 0, 3);
    EXPECT_THAT(selected("/text"), Optional(QString("wor")));
    element("/text").selections.clear();
    EXPECT_THAT(selected("/text"), Optional(QString()));
    element("/text").text.clear();
    EXPECT_EQ(selected("/text"), std::nullopt) << "an empty cell may be among others";
}

TEST_F(AtSpiSelectionTest, ReadsNothingWhereOffsetsAreWrong) {
    toolkit = atSpiToolkit(u"Chromium", u"Chromium");
    whole("/page", u"\uFFFC\uFFFC"_s).links = QStringList{"/plain", "/wide"};
    whole("/plain", "words");
    textOf("/wide", u"\U0001F600 words"_s, 0, 5);
    EXPECT_THAT(selected("/plain"), Optional(QString("words")));
    EXPECT_EQ(selected("/wide"), std::nullopt);
    EXPECT_EQ(selected("/page"), std::nullopt);
}

TEST_F(AtSpiSelectionTest, SurvivesOffsetsThatMakeNoSense) {
    for (const auto& [start, end] : std::vector<std::pair<int, int>>{
             {-5, 3}, {3, -1}, {0, farthest}, {farthest, farthest}, {farthest - 1, farthest}}) {
        textOf("/one", "abc", start, end);
        EXPECT_EQ(selected("/one").value_or(""), "") << start << ' ' << end;
    }
    textOf("/one", "abc", 3, 1);
    EXPECT_THAT(selected("/one"), Optional(QString("bc"))) << "the ends may be swapped";
}

TEST_F(AtSpiSelectionTest, SurvivesAPageThatContainsItself) {
    whole("/page", u"a\uFFFCb\uFFFCc"_s).links = QStringList{"/page", "/page"};
    const QString text = selected("/page").value_or("");
    EXPECT_THAT(text.toStdString(), testing::StartsWith("a"));
    EXPECT_LT(text.size(), 100'000);
}

TEST_F(AtSpiSelectionTest, TakesNoMoreChildrenThanAnyoneLooksAt) {
    element("/window").children = QStringList(6000, "/child");
    const auto refs =
        told([&] { return atspi::refsIn(bus.call(atspi::children(at("/window")), {})); });
    ASSERT_TRUE(refs);
    EXPECT_EQ(refs->size(), 4096U);
}

TEST_F(AtSpiSelectionTest, TakesNoMoreTextThanItAskedFor) {
    whole("/one", "abc");
    tree.instead = [](const QDBusMessage& call) {
        return call.member() == "GetText" ? call.createReply(QString(10'000'000, u'x'))
                                          : QDBusMessage();
    };
    EXPECT_EQ(selected("/one").value_or(""), "");
}

TEST_F(AtSpiSelectionTest, TakesEachErrorAndEachWrongFormForNothing) {
    whole("/one", u"a\uFFFC"_s).links = QStringList{"/one"};
    for (const QString& member :
         {"GetRole", "GetInterfaces", "GetAttributes", "GetNSelections", "GetSelection", "GetText",
          "GetLinkIndex", "GetLink", "GetObject", "Get"}) {
        for (int kind = 0; kind < 3; ++kind) {
            tree.instead = [&](const QDBusMessage& call) {
                if (call.member() != member) return QDBusMessage();
                if (kind == 0) return call.createErrorReply(QDBusError::NoMemory, "none");
                return kind == 1 ? call.createReply() : call.createReply(QVariant(7.5));
            };
            EXPECT_LT(selected("/one").value_or("").size(), 100'000) << member.toStdString();
            (void)value("/one");
        }
    }
}

} // namespace
} // namespace vorq
