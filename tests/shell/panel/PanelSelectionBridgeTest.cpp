#include "shell/panel/PanelSelectionBridge.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

class ScriptedText final : public SelectableText {
  public:
    std::optional<QString> selected;
    std::optional<QRectF> layout = QRectF(10, 100, 80, 20);
    std::optional<QRectF> ax;
    bool isUnderPoint = false;
    int cleared = 0;

    [[nodiscard]] std::optional<QString> selectedText() const override { return selected; }
    [[nodiscard]] std::optional<QRectF> layoutSelectionRect() const override { return layout; }
    [[nodiscard]] std::optional<QRectF> axSelectionRect() const override { return ax; }
    [[nodiscard]] bool isPointInSelection(QPointF) const override { return isUnderPoint; }
    [[nodiscard]] bool hasGlyphsAt(QPointF) const override { return false; }
    void clearSelection() override {
        ++cleared;
        selected.reset();
    }
};

class PanelSelectionBridgeTest : public testing::Test {
  protected:
    PanelSelectionBridgeTest() { bridge.watch(&owner, &text); }

    void select(const QString& selected) {
        text.selected = selected;
        bridge.refresh();
    }

    QObject owner;
    ScriptedText text;
    PanelSelectionBridge bridge;
};

TEST_F(PanelSelectionBridgeTest, ASelectionShowsAPill) {
    select("two words");
    EXPECT_TRUE(bridge.hasSelection());
    EXPECT_EQ(bridge.selectedText(), "two words");
    EXPECT_EQ(bridge.selectionBounds(), text.layout);
}

TEST_F(PanelSelectionBridgeTest, OneCharacterShowsNoPill) {
    select("a");
    EXPECT_FALSE(bridge.hasSelection());
    select("👩‍👩‍👧");
    EXPECT_FALSE(bridge.hasSelection());
}

TEST_F(PanelSelectionBridgeTest, TwoCharactersAndALineBreakDeepenTheTwo) {
    QString deepened;
    bridge.setOnDeepen([&deepened](const QString& excerpt) { deepened = excerpt; });
    select("ab\n");
    EXPECT_TRUE(bridge.hasSelection());
    EXPECT_TRUE(bridge.commitDeepen());
    EXPECT_EQ(deepened, "ab");
}

TEST_F(PanelSelectionBridgeTest, AttachmentsInTheTextAreLeftOut) {
    select(QString("one") + QChar(QChar::ObjectReplacementCharacter) + "two");
    EXPECT_EQ(bridge.selectedText(), "onetwo");
}

TEST_F(PanelSelectionBridgeTest, WhiteSpaceAloneShowsNoPill) {
    select(" \n ");
    EXPECT_FALSE(bridge.hasSelection());
}

TEST_F(PanelSelectionBridgeTest, TheOnlyRectangleThereIsCounts) {
    text.ax = QRectF(1, 2, 3, 4);
    text.layout.reset();
    select("ab");
    EXPECT_EQ(bridge.selectionBounds(), text.ax);
}

TEST_F(PanelSelectionBridgeTest, AccessibilityCountsWhenItMeansTheSameLine) {
    text.ax = QRectF(12, 124, 70, 20);
    select("ab");
    EXPECT_EQ(bridge.selectionBounds(), text.ax);
    text.ax = QRectF(12, 125, 70, 20);
    bridge.refresh();
    EXPECT_EQ(bridge.selectionBounds(), text.layout);
}

TEST_F(PanelSelectionBridgeTest, ATallAccessibilityRectangleReachesFurther) {
    text.ax = QRectF(12, 130, 70, 60); // 50 apart, within its height
    select("ab");
    EXPECT_EQ(bridge.selectionBounds(), text.ax);
}

TEST_F(PanelSelectionBridgeTest, WithoutARectangleThePillHasNoPlace) {
    text.layout.reset();
    select("ab");
    EXPECT_TRUE(bridge.hasSelection());
    EXPECT_EQ(bridge.selectionBounds(), std::nullopt);
}

TEST_F(PanelSelectionBridgeTest, OnlyRealChangesAreTold) {
    int told = 0;
    QObject::connect(&bridge, &PanelSelectionBridge::selectedTextChanged, &owner, [&] { ++told; });
    QObject::connect(&bridge, &PanelSelectionBridge::selectionBoundsChanged, &owner,
                     [&] { ++told; });
    QObject::connect(&bridge, &PanelSelectionBridge::hasSelectionChanged, &owner, [&] { ++told; });
    select("ab");
    EXPECT_EQ(told, 3);
    bridge.refresh();
    EXPECT_EQ(told, 3);
    bridge.clear();
    EXPECT_EQ(told, 6);
    bridge.clear();
    EXPECT_EQ(told, 6);
}

TEST_F(PanelSelectionBridgeTest, ATextThatIsGoneHasNoSelection) {
    auto other = std::make_unique<QObject>();
    ScriptedText gone;
    bridge.watch(other.get(), &gone);
    gone.selected = "words";
    bridge.refresh();
    EXPECT_TRUE(bridge.hasSelection());
    other.reset();
    bridge.refresh();
    EXPECT_FALSE(bridge.hasSelection());
}

TEST_F(PanelSelectionBridgeTest, AnotherTextTakesTheSelectionAway) {
    select("ab");
    ScriptedText other;
    bridge.watch(&owner, &other);
    EXPECT_EQ(text.cleared, 1);
}

TEST_F(PanelSelectionBridgeTest, DeepenDropsTheSelection) {
    bridge.setOnDeepen([](const QString&) {});
    select("ab");
    bridge.setPillHitFrame({1, 2, 30, 10});
    EXPECT_TRUE(bridge.commitDeepen());
    EXPECT_EQ(text.cleared, 1);
    EXPECT_FALSE(bridge.hasSelection());
    EXPECT_EQ(bridge.pillHitFrame(), std::nullopt);
}

TEST_F(PanelSelectionBridgeTest, DeepenNeedsAnExcerptAndATaker) {
    EXPECT_FALSE(bridge.commitDeepen());
    select("ab");
    EXPECT_FALSE(bridge.commitDeepen());
    EXPECT_FALSE(bridge.hasSelection());
}

TEST_F(PanelSelectionBridgeTest, WithoutASelectionNoClickClears) {
    EXPECT_FALSE(bridge.shouldClearSelection({true, {}, {}}));
}

TEST_F(PanelSelectionBridgeTest, AClickInAnotherWindowClears) {
    select("ab");
    text.isUnderPoint = true;
    EXPECT_TRUE(bridge.shouldClearSelection({true, {}, {}}));
}

TEST_F(PanelSelectionBridgeTest, AClickOnTheSelectedGlyphsKeepsThem) {
    select("ab");
    text.isUnderPoint = true;
    EXPECT_FALSE(bridge.shouldClearSelection({}));
}

TEST_F(PanelSelectionBridgeTest, AClickOnOrNearThePillKeepsTheSelection) {
    select("ab");
    bridge.setPillHitFrame({100, 50, 80, 34});
    const auto clears = [this](double x, double y) {
        return bridge.shouldClearSelection({false, {}, {x, y}});
    };
    EXPECT_FALSE(clears(100, 50));
    EXPECT_FALSE(clears(180, 84));
    EXPECT_FALSE(clears(92, 42));
    EXPECT_FALSE(clears(188, 92));
    EXPECT_TRUE(clears(91, 50));
    EXPECT_TRUE(clears(140, 93));
}

TEST_F(PanelSelectionBridgeTest, APillOfNoWidthKeepsNothing) {
    select("ab");
    bridge.setPillHitFrame({100, 50, 1, 34});
    EXPECT_TRUE(bridge.shouldClearSelection({false, {}, {100, 60}}));
}

} // namespace
} // namespace vorq
