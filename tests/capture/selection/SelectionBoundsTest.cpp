#include "capture/selection/SelectionBounds.h"
#include "platform/testing/ScriptedAccessibility.h"

#include <gmock/gmock.h>

#include <limits>

namespace vorq {
namespace {

class SelectionBoundsTest : public testing::Test {
  protected:
    ScriptedAccessibility m_accessibility;
    ScriptedElement& m_element = m_accessibility.element("text");

    void setBounds(TextRange range, const QRectF& rect) {
        m_element.bounds.emplace_back(range, rect);
    }

    void setGlyph(std::int64_t index, const QRectF& rect) { setBounds({index, 1}, rect); }

    // Characters on one line, each ten wide and twenty high.
    void setGlyphs(std::int64_t first, std::int64_t last) {
        for (std::int64_t index = first; index <= last; ++index)
            setGlyph(index, QRectF(static_cast<double>(10 * index), 100, 10, 20));
    }

    [[nodiscard]] std::optional<QRectF> bounds(TextRange range,
                                               std::optional<QRectF> frame = {}) const {
        return selectionAXBounds(range, m_element, frame);
    }

    [[nodiscard]] qsizetype boundsReads() const { return m_accessibility.reads().size(); }
};

TEST_F(SelectionBoundsTest, AnEmptyRangeHasNone) {
    setBounds({3, 0}, QRectF(0, 0, 10, 10));
    EXPECT_EQ(bounds({3, 0}), std::nullopt);
    EXPECT_EQ(bounds({3, -1}), std::nullopt);
    EXPECT_EQ(boundsReads(), 0);
}

TEST_F(SelectionBoundsTest, TakesTheWholeRangeIfNoCharacterCanBeRead) {
    setBounds({0, 5}, QRectF(1, 2, 30, 10));
    EXPECT_EQ(bounds({0, 5}), QRectF(1, 2, 30, 10));
}

TEST_F(SelectionBoundsTest, JoinsTheCharactersIfTheRangeCannotBeRead) {
    setGlyphs(2, 4);
    EXPECT_EQ(bounds({2, 3}), QRectF(20, 100, 30, 20));
}

TEST_F(SelectionBoundsTest, TheLargerWinsAndATieGoesToTheWholeRange) {
    setGlyphs(0, 2);
    setBounds({0, 3}, QRectF(0, 100, 29, 20));
    EXPECT_EQ(bounds({0, 3}), QRectF(0, 100, 30, 20));
    m_element.bounds.back().second = QRectF(5, 5, 20, 30);
    EXPECT_EQ(bounds({0, 3}), QRectF(5, 5, 20, 30));
}

TEST_F(SelectionBoundsTest, AWholeRangeSmallerThanAPointDoesNotCount) {
    setBounds({0, 3}, QRectF(0, 0, 0.9, 20));
    EXPECT_EQ(bounds({0, 3}), std::nullopt);
    m_element.bounds.back().second = QRectF(0, 0, 20, 0.9);
    EXPECT_EQ(bounds({0, 3}), std::nullopt);
    m_element.bounds.back().second = QRectF(0, 0, 1, 1);
    EXPECT_EQ(bounds({0, 3}), QRectF(0, 0, 1, 1));
}

TEST_F(SelectionBoundsTest, SkipsLowCharactersAndCountsNarrowOnes) {
    setGlyph(0, QRectF(0, 0, 10, 0.9));
    setGlyph(1, QRectF(50, 100, 0, 20));
    EXPECT_EQ(bounds({0, 2}), QRectF(50, 100, 0, 20));
}

TEST_F(SelectionBoundsTest, SamplesEveryCharacterOfAShortSelection) {
    EXPECT_EQ(bounds({7, 30}), std::nullopt);
    EXPECT_EQ(boundsReads(), 1 + 30);
}

TEST_F(SelectionBoundsTest, SamplesEachIndexOnce) {
    EXPECT_EQ(bounds({7, 1}), std::nullopt);
    EXPECT_EQ(boundsReads(), 1 + 1);
    EXPECT_EQ(bounds({7, 2}), std::nullopt);
    EXPECT_EQ(boundsReads(), 2 + 1 + 2);
}

TEST_F(SelectionBoundsTest, SamplesALongSelectionInSteps) {
    setGlyph(100, QRectF(1, 0, 1, 1));
    setGlyph(1500, QRectF(2, 0, 1, 1));
    setGlyph(1599, QRectF(3, 0, 1, 1));
    setGlyph(50, QRectF(1000, 0, 1, 1));
    EXPECT_EQ(bounds({0, 1600}), QRectF(1, 0, 3, 1));
    EXPECT_EQ(boundsReads(), 1 + 17);
}

TEST_F(SelectionBoundsTest, AnAbsurdRangeIsBounded) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(bounds({0, most}), std::nullopt);
    EXPECT_LT(boundsReads(), 40);
    EXPECT_EQ(bounds({1, most}), std::nullopt);
    EXPECT_EQ(bounds({most, 1}), std::nullopt);
    EXPECT_EQ(bounds({std::numeric_limits<std::int64_t>::min(), most}), std::nullopt);
    EXPECT_LT(boundsReads(), 80);
}

TEST_F(SelectionBoundsTest, CutsCharactersToTheElement) {
    setGlyphs(0, 9);
    EXPECT_EQ(bounds({0, 10}, QRectF(25, 110, 30, 50)), QRectF(25, 110, 30, 10));
}

TEST_F(SelectionBoundsTest, CharactersOutsideTheElementDoNotCount) {
    setGlyphs(0, 9);
    EXPECT_EQ(bounds({0, 10}, QRectF(25, 300, 30, 50)), std::nullopt);
}

TEST_F(SelectionBoundsTest, ANarrowCharacterWithinTheElementCounts) {
    setGlyph(0, QRectF(30, 100, 0, 20));
    EXPECT_EQ(bounds({0, 1}, QRectF(25, 90, 30, 50)), QRectF(30, 100, 0, 20));
}

TEST_F(SelectionBoundsTest, NumbersThatAreNoneDoNotCount) {
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    setBounds({0, 2}, QRectF(none, 0, 10, 10));
    setGlyph(0, QRectF(0, std::numeric_limits<double>::infinity(), 10, 10));
    setGlyph(1, QRectF(5, 5, 10, none));
    EXPECT_EQ(bounds({0, 2}), std::nullopt);
}

TEST_F(SelectionBoundsTest, MarkersGiveBoundsOfAtLeastAPoint) {
    EXPECT_EQ(textMarkerSelectionBounds(m_element), std::nullopt);
    m_element.markerBounds = QRectF(1, 2, 3, 0.9);
    EXPECT_EQ(textMarkerSelectionBounds(m_element), std::nullopt);
    m_element.markerBounds = QRectF(1, 2, 3, 1);
    EXPECT_EQ(textMarkerSelectionBounds(m_element), QRectF(1, 2, 3, 1));
}

TEST_F(SelectionBoundsTest, AnElementHasAFrameOfAtLeastAPoint) {
    m_element.origin = QPointF(-5, 7);
    EXPECT_EQ(elementAXFrame(m_element), std::nullopt);
    m_element.extent = QSizeF(1, 1);
    EXPECT_EQ(elementAXFrame(m_element), QRectF(-5, 7, 1, 1));
    m_element.extent = QSizeF(0.9, 40);
    EXPECT_EQ(elementAXFrame(m_element), std::nullopt);
    m_element.origin.reset();
    m_element.extent = QSizeF(40, 40);
    EXPECT_EQ(elementAXFrame(m_element), std::nullopt);
}

} // namespace
} // namespace vorq
