// When the card comes, where it stands, when it goes, and who has the keyboard.

#include "doubles/shell/OverlayFixture.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class WritingToolsOverlayControllerTest : public OverlayFixture {};

TEST_F(WritingToolsOverlayControllerTest, ComesBesideTheSelectionAndLeavesTheKeyboard) {
    pressKey();
    EXPECT_THAT(captured, ElementsAre(writer));
    ASSERT_TRUE(controller->isOpen());
    EXPECT_THAT(window.calls, ElementsAre("refuse", "show"));
    EXPECT_EQ(window.at, QRectF(388, 398, 372, 200));
    EXPECT_TRUE(controller->model()->arrowPointsUp());
    EXPECT_EQ(controller->tipPoint(), QPointF(538, 598));
    EXPECT_EQ(workspace.frontmostProcess(), writer);
    EXPECT_TRUE(presses.isOn);
    EXPECT_EQ(controller->model()->selection().window, WindowId(writer));
    EXPECT_EQ(controller->model()->log().interactions().front().kind,
              WritingToolsInteraction::Kind::opened());
}

TEST_F(WritingToolsOverlayControllerTest, TakesTheKeyboardWhenTheKeyIsPressedAgain) {
    pressKey();
    pressKey();
    EXPECT_THAT(captured, ElementsAre(writer));
    EXPECT_EQ(workspace.activeWindow(), window.id());
    EXPECT_TRUE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, TakesTheKeyboardForAPressIntoItsField) {
    pressKey();
    click({.at = {400, 500}, .surface = PressedSurface::OwnWindow, .window = window.id()});
    EXPECT_EQ(workspace.frontmostProcess(), writer) << "a press on its buttons leaves it";
    card->wantKeyboard();
    EXPECT_EQ(workspace.activeWindow(), window.id());
}

TEST_F(WritingToolsOverlayControllerTest, EscapeClosesItAndGivesTheKeyboardBack) {
    pressKey();
    pressKey();
    window.input->escapePressed();
    EXPECT_FALSE(controller->isOpen());
    EXPECT_FALSE(window.isShown);
    EXPECT_FALSE(presses.isOn);
    EXPECT_THAT(workspace.activations(), ElementsAre(WindowId(writer)));
}

TEST_F(WritingToolsOverlayControllerTest, ClosingWithoutTheKeyboardActivatesNobody) {
    pressKey();
    card->dismiss();
    EXPECT_FALSE(controller->isOpen());
    EXPECT_THAT(workspace.activations(), IsEmpty());
}

TEST_F(WritingToolsOverlayControllerTest, AClickElsewhereClosesIt) {
    pressKey();
    click({.at = {5, 5}});
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, TheClickThatOpenedItDoesNotCloseIt) {
    controller->handleKey(writer);
    clock.settle();
    ASSERT_TRUE(controller->isOpen());
    click({.at = {5, 5}});
    EXPECT_TRUE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, PressesOnMenusOfItsOwnAreNoneElsewhere) {
    pressKey();
    click({.at = {5, 5}, .surface = PressedSurface::OwnMenu, .window = 7});
    click({.at = {5, 5}, .surface = PressedSurface::OwnWindow, .window = 8, .parent = window.id()});
    EXPECT_TRUE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, AnotherApplicationInFrontClosesIt) {
    pressKey();
    workspace.bringToFront(browser);
    EXPECT_FALSE(controller->isOpen());
    EXPECT_THAT(workspace.activations(), IsEmpty());
}

TEST_F(WritingToolsOverlayControllerTest, ItsOwnApplicationComingBackDoesNot) {
    pressKey();
    pressKey();
    workspace.bringToFront(writer);
    EXPECT_TRUE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, ASelectionThatIsGoneClosesIt) {
    pressKey();
    looker.sight = SelectionSight{};
    advance(2s);
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, ASelectionThatIsNotShownMeanwhileIsNotGone) {
    pressKey();
    pressKey();
    looker.sight = SelectionSight{};
    advance(10s);
    EXPECT_TRUE(controller->isOpen()) << "the card has the keyboard";
}

TEST_F(WritingToolsOverlayControllerTest, AnApplicationThatHangsKeepsItAndOneThatEndsDoesNot) {
    pressKey();
    looker.sight.reset();
    advance(10s);
    EXPECT_TRUE(controller->isOpen());
    workspace.quit(writer);
    advance(3s);
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, FollowsTheSelectionAndTellsTheSession) {
    pressKey();
    looker.sight->placement->screenFrame.translate(0, 100);
    looker.sight->placement->clickPoint += QPointF(0, 100);
    advance(1s);
    EXPECT_EQ(window.at.top(), 498);
    EXPECT_EQ(controller->model()->log().interactions().back().kind,
              WritingToolsInteraction::Kind::highlightMoved());
}

TEST_F(WritingToolsOverlayControllerTest, FollowsAtOnceWhenAWheelTurns) {
    pressKey();
    advance(10ms);
    looker.sight->placement->screenFrame.translate(0, 100);
    emit presses.scrolled();
    advance(1ms);
    EXPECT_EQ(window.at.top(), 498);
}

TEST_F(WritingToolsOverlayControllerTest, FollowsAtOnceWhenAKeyIsPressedInTheApplication) {
    EXPECT_FALSE(presses.tellsOfKeys);
    pressKey();
    EXPECT_TRUE(presses.tellsOfKeys);
    advance(10ms);
    looker.sight->placement->screenFrame.translate(0, 100);
    emit presses.keyPressed();
    advance(1ms);
    EXPECT_EQ(window.at.top(), 498);
    controller->close();
    EXPECT_FALSE(presses.tellsOfKeys);
}

TEST_F(WritingToolsOverlayControllerTest, WhatIsTypedIntoItIsNoReasonToLook) {
    pressKey();
    pressKey();
    looker.sight->placement->screenFrame.translate(0, 100);
    const QRectF before = window.at;
    emit presses.keyPressed();
    advance(1ms);
    EXPECT_EQ(window.at, before);
}

TEST_F(WritingToolsOverlayControllerTest, StandsAboveWhereThereIsNoRoomBelow) {
    snapshot.screenFrame.moveTop(60);
    snapshot.clickPoint = {550, 68};
    pressKey();
    EXPECT_FALSE(controller->model()->arrowPointsUp());
    EXPECT_FALSE(card->arrowPointsUp());
    EXPECT_EQ(window.at.top(), 78);
    window.size.setHeight(320);
    window.input->sizeChanged();
    EXPECT_EQ(window.at, QRectF(388, 78, 372, 320)) << "it grows away from the selection";
}

TEST_F(WritingToolsOverlayControllerTest, GoesToAnotherScreenWhenItsOwnIsUnplugged) {
    pressKey();
    screens.change({{.name = "small",
                     .frame = {0, 0, 800, 500},
                     .visibleFrame = {0, 0, 800, 500},
                     .scale = 1}});
    EXPECT_TRUE(QRectF(0, 0, 800, 500).contains(window.at));
}

TEST_F(WritingToolsOverlayControllerTest, AReplacementGivesTheKeyboardBackAndKeepsTheCard) {
    pressKey();
    pressKey();
    suggest("The new sentence.");
    replacer.waits = true;
    replaceAndSettle();
    EXPECT_TRUE(controller->suppressOutsideClose());
    EXPECT_FALSE(window.accepts);
    EXPECT_EQ(workspace.frontmostProcess(), writer);
    workspace.bringToFront(browser);
    click({.at = {5, 5}});
    EXPECT_TRUE(controller->isOpen()) << "windows come and go while it is under way";
    workspace.bringToFront(writer);
    replacer.finish();
    clock.settle();
    EXPECT_FALSE(controller->suppressOutsideClose());
    EXPECT_TRUE(card->isReplaced());
    EXPECT_EQ(workspace.frontmostProcess(), writer);
    looker.sight = SelectionSight{};
    advance(5s);
    EXPECT_TRUE(controller->isOpen()) << "for an undo";
    advance(WritingToolsOverlayController::stayAfterReplacing);
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, StaysForAnUndoWhileThePointerIsOverIt) {
    pressKey();
    suggest("The new sentence.");
    replaceAndSettle();
    card->setProperty("isHovered", true);
    advance(60s);
    EXPECT_TRUE(controller->isOpen());
    card->setProperty("isHovered", false);
    advance(20s);
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, AFailedReplacementGetsTheKeyboardBack) {
    pressKey();
    pressKey();
    suggest("The new sentence.");
    replacer.outcome = SelectionReplacer::Outcome::NotReplaced;
    replaceAndSettle();
    EXPECT_EQ(workspace.activeWindow(), window.id());
}

TEST_F(WritingToolsOverlayControllerTest, AFailedReplacementTakesNoKeyboardFromWhoHasItNow) {
    pressKey();
    pressKey();
    suggest("The new sentence.");
    replacer.waits = true;
    replacer.outcome = SelectionReplacer::Outcome::OnClipboard;
    replaceAndSettle();
    workspace.bringToFront(browser);
    replacer.finish();
    clock.settle();
    EXPECT_EQ(workspace.frontmostProcess(), browser);
    EXPECT_EQ(controller->model(), nullptr);
    EXPECT_EQ(card->notice(), "The selection has changed, so nothing was replaced. The suggestion "
                              "is on the clipboard.");
}

TEST_F(WritingToolsOverlayControllerTest, WhatLandsAfterTheWriterHasGoneOnClosesTheCard) {
    pressKey();
    suggest("The new sentence.");
    replacer.waits = true;
    replaceAndSettle();
    workspace.bringToFront(browser);
    replacer.finish();
    clock.settle();
    EXPECT_FALSE(controller->isOpen());
    EXPECT_EQ(workspace.frontmostProcess(), browser);
}

TEST_F(WritingToolsOverlayControllerTest, AFailedReplacementByTheMouseLeavesItWhereItWas) {
    pressKey();
    suggest("The new sentence.");
    replacer.outcome = SelectionReplacer::Outcome::NotReplaced;
    replaceAndSettle();
    EXPECT_EQ(workspace.frontmostProcess(), writer);
}

TEST_F(WritingToolsOverlayControllerTest, TheKeyAfterAReplacementIsForWhatIsHighlightedNext) {
    pressKey();
    suggest("The new sentence.");
    replaceAndSettle();
    snapshot.text = snapshot.exactText = "Another sentence.";
    pressKey();
    ASSERT_TRUE(controller->model());
    EXPECT_EQ(controller->model()->selection().originalText, "Another sentence.");
    EXPECT_EQ(card->suggestion(), "");
    EXPECT_FALSE(card->isReplaced());
}

TEST_F(WritingToolsOverlayControllerTest, TheKeyAfterAReplacementLeadsToUndoIfNothingIs) {
    pressKey();
    suggest("The new sentence.");
    replaceAndSettle();
    snapshot.text = snapshot.exactText = "";
    pressKey();
    EXPECT_EQ(workspace.activeWindow(), window.id());
    EXPECT_TRUE(card->canUndo());
}

TEST_F(WritingToolsOverlayControllerTest, AReplacementOutlivesTheCard) {
    pressKey();
    suggest("The new sentence.");
    replacer.waits = true;
    replaceAndSettle();
    card->dismiss();
    clock.settle();
    EXPECT_FALSE(controller->isOpen());
    replacer.finish();
    clock.settle();
    EXPECT_EQ(replacer.asked.size(), 1U);
}

TEST_F(WritingToolsOverlayControllerTest, AReplacementThatFailsAfterTheCardWasClosedIsToldOf) {
    pressKey();
    suggest("The new sentence.");
    replacer.waits = true;
    replacer.outcome = SelectionReplacer::Outcome::OnClipboard;
    card->replace();
    card->dismiss();
    advance(std::chrono::milliseconds(100));
    EXPECT_FALSE(controller->isOpen());
    ASSERT_EQ(replacer.asked.size(), 1U) << "nothing cancels it";
    replacer.finish();
    clock.settle();
    EXPECT_TRUE(controller->isOpen());
    EXPECT_EQ(controller->model(), nullptr);
    EXPECT_THAT(card->notice().toStdString(), testing::HasSubstr("is on the clipboard"));
}

TEST_F(WritingToolsOverlayControllerTest, ALateReplacementIsNoneOfTheNextSession) {
    pressKey();
    suggest("The new sentence.");
    replacer.waits = true;
    replaceAndSettle();
    card->dismiss();
    snapshot.text = snapshot.exactText = "Another sentence.";
    pressKey();
    replacer.finish();
    clock.settle();
    EXPECT_TRUE(controller->isOpen());
    EXPECT_FALSE(card->isReplaced());
    EXPECT_FALSE(card->canUndo());
    advance(60s);
    EXPECT_TRUE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, ClosingJustAsAReplacementEndsIsNoHarm) {
    pressKey();
    suggest("The new sentence.");
    replacer.waits = true;
    replaceAndSettle();
    replacer.finish();
    card->dismiss();
    clock.settle();
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, AfterAnUndoItLeavesInTimeAsWell) {
    pressKey();
    suggest("The new sentence.");
    replaceAndSettle();
    card->undo();
    advance(std::chrono::milliseconds(100));
    EXPECT_FALSE(card->isReplaced());
    advance(WritingToolsOverlayController::stayAfterReplacing);
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, APressElsewhereLeavesTheKeyboardToWhoTakesIt) {
    pressKey();
    pressKey();
    click({.at = {5, 5}});
    EXPECT_FALSE(controller->isOpen());
    workspace.bringToFront(browser);
    advance(1s);
    EXPECT_EQ(workspace.frontmostProcess(), browser);
}

TEST_F(WritingToolsOverlayControllerTest, APressWhereNobodyTakesTheKeyboardGivesItBack) {
    pressKey();
    pressKey();
    click({.at = {5, 5}});
    EXPECT_EQ(workspace.activeWindow(), std::nullopt);
    advance(1s);
    EXPECT_EQ(workspace.frontmostProcess(), writer);
}

TEST_F(WritingToolsOverlayControllerTest, ComesOverNobodyTheWriterHasGoneTo) {
    whileCapturing = [this] { workspace.bringToFront(browser); };
    pressKey();
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, WithoutASelectionItSaysSoBesideThePointer) {
    snapshot.text = snapshot.exactText = "";
    pressKey();
    EXPECT_TRUE(controller->isOpen());
    EXPECT_EQ(controller->model(), nullptr);
    EXPECT_EQ(card->notice(), "Highlight the text that is to be rewritten, then try again.");
    card->wantKeyboard();
    EXPECT_EQ(workspace.frontmostProcess(), writer);
    click({.at = {5, 5}});
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, WithoutTrustItSaysWhatToDo) {
    isTrusted = false;
    snapshot.text = snapshot.exactText = "";
    pressKey();
    EXPECT_TRUE(card->notice().contains(u"“Accessibility”"_s));
}

TEST_F(WritingToolsOverlayControllerTest, WhatReadsLikeASecretIsNotShown) {
    snapshot.isHeldBack = true;
    pressKey();
    EXPECT_EQ(controller->model(), nullptr);
    EXPECT_FALSE(card->notice().contains("sentence"));
    EXPECT_TRUE(card->notice().contains("password"));
}

TEST_F(WritingToolsOverlayControllerTest, WhatGoesToThePanelClosesTheCard) {
    pressKey();
    card->setDraft("send to vorq");
    card->submit();
    clock.settle();
    EXPECT_THAT(sent, ElementsAre("The old sentence."));
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, ThePanelOverItClosesIt) {
    constexpr WindowId panel = 91;
    pressKey();
    emit workspace.frontmostChanged(ours, window.id());
    EXPECT_TRUE(controller->isOpen());
    emit workspace.frontmostChanged(ours, panel);
    EXPECT_FALSE(controller->isOpen());
}

TEST_F(WritingToolsOverlayControllerTest, OpeningIsGivenUpWithTheController) {
    controller->handleKey(writer);
    controller.reset();
    clock.settle();
    EXPECT_FALSE(window.isShown);
    EXPECT_EQ(window.input, nullptr);
}

} // namespace
} // namespace vorq
