#include "capture/selection/AccessibleSelection.h"
#include "platform/testing/ScriptedAccessibility.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

class AccessibleSelectionTest : public testing::Test {
  protected:
    ScriptedAccessibility m_accessibility;
    std::stop_source m_stop;
    CaptureSource m_source{
        .accessibility = m_accessibility, .process = 12, .stop = m_stop.get_token()};

    ScriptedElement& focus(const QString& name) {
        m_accessibility.focusedName = name;
        return m_accessibility.element(name);
    }

    ScriptedElement& application() { return m_accessibility.element("application"); }

    [[nodiscard]] QString ownerName() const {
        const AccessibleElementPtr owner = selectionOwningElement(m_source);
        return owner ? std::static_pointer_cast<ScriptedElement>(owner)->name() : "nothing";
    }
};

// The walk

TEST_F(AccessibleSelectionTest, TheWalkNeedsAProcess) {
    focus("field").text = "selected";
    application().text = "selected";
    m_source.process.reset();
    EXPECT_EQ(ownerName(), "nothing");
    EXPECT_THAT(m_accessibility.reads(), IsEmpty());
}

TEST_F(AccessibleSelectionTest, TheWalkStartsAtTheFocusedWindow) {
    m_accessibility.focusedWindowName = "window";
    m_accessibility.element("window").text = "in the window";
    application().text = "in the application";
    EXPECT_EQ(ownerName(), "window");
}

TEST_F(AccessibleSelectionTest, TheWalkGoesByLevels) {
    application().childNames = QStringList{"a", "b"};
    m_accessibility.element("a").childNames = QStringList{"deep"};
    m_accessibility.element("deep").text = "deep";
    m_accessibility.element("b").range = TextRange{.location = 0, .length = 1};
    EXPECT_EQ(ownerName(), "b");
}

TEST_F(AccessibleSelectionTest, TheWalkPassesWhiteSpaceAndEmptyRanges) {
    application().text = " \n";
    application().range = TextRange{.location = 4, .length = 0};
    application().childNames = QStringList{"child"};
    m_accessibility.element("child").text = "x";
    EXPECT_EQ(ownerName(), "child");
}

TEST_F(AccessibleSelectionTest, TheWalkEndsInATreeThatHoldsItself) {
    application().childNames = QStringList{"application", "application"};
    EXPECT_EQ(ownerName(), "nothing");
    EXPECT_EQ(m_accessibility.reads().count("application.children"), 2500);
}

TEST_F(AccessibleSelectionTest, TheWalkLooksAtNoMoreThanItsBudget) {
    QStringList names;
    for (int i = 1; i <= 2500; ++i)
        names += QString::number(i);
    application().childNames = names;
    m_accessibility.element("2500").text = "beyond";
    EXPECT_EQ(ownerName(), "nothing");
    m_accessibility.element("2499").text = "the last one";
    EXPECT_EQ(ownerName(), "2499");
}

TEST_F(AccessibleSelectionTest, AStoppedWalkEndsSoon) {
    application().childNames = QStringList{"application"};
    m_accessibility.onRead = [&](const QString&) {
        if (m_accessibility.reads().size() == 20) m_stop.request_stop();
    };
    EXPECT_EQ(ownerName(), "nothing");
    EXPECT_LT(m_accessibility.reads().size(), 30);
}

// The capture

TEST_F(AccessibleSelectionTest, CapturesTheFocusedElementWithItsGeometry) {
    ScriptedElement& field = focus("field");
    field.text = " a word ";
    field.range = TextRange{.location = 3, .length = 8};
    field.origin = QPointF(10, 20);
    field.extent = QSizeF(300, 100);
    field.bounds.emplace_back(*field.range, QRectF(15, 25, 80, 14));
    EXPECT_EQ(captureFromFocusedAccessibilityElement(m_source),
              (AXCapture{.text = " a word ",
                         .rawAXFrame = QRectF(15, 25, 80, 14),
                         .elementAXFrame = QRectF(10, 20, 300, 100),
                         .selectedRange = TextRange{.location = 3, .length = 8}}));
    EXPECT_THAT(m_accessibility.reads(), Not(Contains("application")));
}

TEST_F(AccessibleSelectionTest, CapturesWhatAnUnfocusedElementOwns) {
    focus("button");
    application().childNames = QStringList{"page"};
    m_accessibility.element("page").text = "on the page";
    const auto capture = captureFromFocusedAccessibilityElement(m_source);
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->text, "on the page");
}

TEST_F(AccessibleSelectionTest, CapturesNothingWithoutAnyElement) {
    EXPECT_EQ(captureFromFocusedAccessibilityElement(m_source), std::nullopt);
}

TEST_F(AccessibleSelectionTest, WithoutAProcessTheFocusOfTheSessionCounts) {
    focus("field").text = "anywhere";
    m_source.process.reset();
    const auto capture = captureFromFocusedAccessibilityElement(m_source);
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->text, "anywhere");
    EXPECT_THAT(m_accessibility.reads(), Contains("system-wide focusedElement"));
}

TEST_F(AccessibleSelectionTest, CutsARangeWithoutTextOutOfTheValue) {
    ScriptedElement& field = focus("field");
    field.range = TextRange{.location = 1, .length = 3};
    field.content = u"a👋bc"_s;
    const auto capture = captureFromFocusedAccessibilityElement(m_source);
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->text, u"👋b"_s);
    field.text = "";
    EXPECT_EQ(captureFromFocusedAccessibilityElement(m_source), capture);
}

TEST_F(AccessibleSelectionTest, ARangePastTheEndOfTheValueIsNoText) {
    ScriptedElement& field = focus("field");
    field.content = "abcdef";
    for (const TextRange range : {TextRange{4, 3}, TextRange{7, 1}, TextRange{-2, 3},
                                  TextRange{1, std::numeric_limits<std::int64_t>::max()}}) {
        field.range = range;
        EXPECT_EQ(captureFromFocusedAccessibilityElement(m_source), std::nullopt);
        EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "");
    }
    field.range = TextRange{.location = 4, .length = 2};
    EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "ef");
}

TEST_F(AccessibleSelectionTest, WhiteSpaceIsNoSelection) {
    ScriptedElement& field = focus("field");
    field.text = " \n\t";
    EXPECT_FALSE(elementHasSelection(field));
    EXPECT_EQ(captureFromFocusedAccessibilityElement(m_source), std::nullopt);
    EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "");
    field.range = TextRange{.location = 0, .length = 3};
    field.content = "abc";
    EXPECT_EQ(captureFromFocusedAccessibilityElement(m_source), std::nullopt)
        << "text of white space stands before the value";
}

TEST_F(AccessibleSelectionTest, ARangeThatIsNowhereGivesNoSlice) {
    ScriptedElement& field = focus("field");
    field.range = TextRange{.location = -1, .length = 3};
    field.content = "abcdef";
    EXPECT_EQ(captureFromFocusedAccessibilityElement(m_source), std::nullopt);
    EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "");
}

TEST_F(AccessibleSelectionTest, ARangeThatIsNowhereStandsBesideTheText) {
    ScriptedElement& field = focus("field");
    field.text = "abc";
    field.range = TextRange{.location = -1, .length = 3};
    field.bounds.emplace_back(*field.range, QRectF(1, 2, 30, 10));
    const auto capture = captureFromFocusedAccessibilityElement(m_source);
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->text, "abc");
    EXPECT_EQ(capture->selectedRange, field.range);
    EXPECT_EQ(capture->rawAXFrame, QRectF(1, 2, 30, 10));
}

TEST_F(AccessibleSelectionTest, TextWithoutARangeIsPlacedByMarkers) {
    ScriptedElement& field = focus("field");
    field.text = "abc";
    field.markerBounds = QRectF(1, 2, 30, 10);
    const auto capture = captureFromFocusedAccessibilityElement(m_source);
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->rawAXFrame, QRectF(1, 2, 30, 10));
    EXPECT_EQ(capture->selectedRange, std::nullopt);
}

TEST_F(AccessibleSelectionTest, ARangeWithoutBoundsIsPlacedByMarkers) {
    ScriptedElement& field = focus("field");
    field.text = "abc";
    field.range = TextRange{.location = 0, .length = 3};
    field.markerBounds = QRectF(1, 2, 30, 10);
    const auto capture = captureFromFocusedAccessibilityElement(m_source);
    ASSERT_TRUE(capture);
    EXPECT_EQ(capture->rawAXFrame, QRectF(1, 2, 30, 10));
}

// The text of the focused element

TEST_F(AccessibleSelectionTest, ReadsTheFocusedTextTrimmed) {
    ScriptedElement& field = focus("field");
    field.text = "\n two words ";
    EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "two words");
    field.range = TextRange{.location = 0, .length = 12};
    EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "two words");
}

TEST_F(AccessibleSelectionTest, TheFocusedTextNeverTakesAWalk) {
    focus("button");
    application().text = "elsewhere";
    EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "");
    EXPECT_THAT(m_accessibility.reads(), Not(Contains("application")));
    EXPECT_THAT(m_accessibility.reads(), Not(Contains("button.children")));
}

TEST_F(AccessibleSelectionTest, ASliceOfWhiteSpaceEndsTheReading) {
    ScriptedElement& field = focus("field");
    field.range = TextRange{.location = 1, .length = 2};
    field.content = "a  b";
    m_accessibility.onRead = [&](const QString& read) {
        if (read == "field.value") field.text = "too late";
    };
    EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "");
}

TEST_F(AccessibleSelectionTest, WithoutASliceTheTextIsReadOnceMore) {
    ScriptedElement& field = focus("field");
    field.range = TextRange{.location = 1, .length = 2};
    m_accessibility.onRead = [&](const QString& read) {
        if (read == "field.value") field.text = " just in time ";
    };
    EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "just in time");
}

// Text by accessibility only

TEST_F(AccessibleSelectionTest, WithoutTrustNothingIsRead) {
    focus("field").text = "secret";
    m_accessibility.trusted = false;
    EXPECT_EQ(captureSelectedTextAXOnly(m_source), "");
    EXPECT_THAT(m_accessibility.reads(), IsEmpty());
}

TEST_F(AccessibleSelectionTest, WithTrustTheCapturedTextComesTrimmed) {
    EXPECT_EQ(captureSelectedTextAXOnly(m_source), "");
    focus("field").text = " open ";
    EXPECT_EQ(captureSelectedTextAXOnly(m_source), "open");
}

TEST_F(AccessibleSelectionTest, AStoppedCaptureReadsNothing) {
    focus("field").text = "selected";
    m_stop.request_stop();
    EXPECT_EQ(captureSelectedTextAXOnly(m_source), "");
    EXPECT_EQ(captureSelectedTextFromFocusedElement(m_source), "");
}

TEST(LongerSelectedText, CountsCharactersAndPrefersAccessibility) {
    EXPECT_EQ(longerSelectedText("abc", "xyz"), "abc");
    EXPECT_EQ(longerSelectedText("abc", "wxyz"), "wxyz");
    EXPECT_EQ(longerSelectedText("", "x"), "x");
    EXPECT_EQ(longerSelectedText("", ""), "");
    EXPECT_EQ(longerSelectedText("ab", u"👩‍👩‍👧"_s), "ab");
}

} // namespace
} // namespace vorq
