// How the panel looks in high contrast and with larger text.

#include "doubles/ui/PanelStage.h"
#include "doubles/ui/Samples.h"
#include "ui/reply/ReplyView.h"

#include "areas/AppearanceSettings.h"
#include "shell/look/Contrast.h"

#include <QHash>
#include <QImage>

#include <gmock/gmock.h>

namespace vorq {
namespace {

class AccessLooksTest : public testing::Test {
  protected:
    [[nodiscard]] QRect inScene(const QQuickItem& item) const {
        return item.mapRectToScene(QRectF(0, 0, item.width(), item.height())).toAlignedRect();
    }
    [[nodiscard]] QImage picture() {
        stage.settle(300);
        return stage.window->grabWindow();
    }

    // The colour that most of the place has.
    [[nodiscard]] static QColor groundOf(const QImage& shown, const QRect& place) {
        QHash<QRgb, int> counts;
        QRgb most = 0;
        for (int y = place.top(); y <= place.bottom(); ++y)
            for (int x = place.left(); x <= place.right(); ++x)
                if (const QRgb color = shown.pixel(x, y); ++counts[color] > counts.value(most))
                    most = color;
        return QColor::fromRgb(most);
    }
    // Of anything in the place with its ground.
    [[nodiscard]] static double strongestIn(const QImage& shown, const QRect& place) {
        const QColor ground = groundOf(shown, place);
        double strongest = 1;
        for (int y = place.top(); y <= place.bottom(); ++y)
            for (int x = place.left(); x <= place.right(); ++x)
                strongest = std::max(strongest, Contrast::ratio(shown.pixelColor(x, y), ground));
        return strongest;
    }

    // Whole in the window, and seen.
    [[nodiscard]] QList<QQuickItem*> shownTexts() {
        QList<QQuickItem*> texts;
        for (QQuickItem* item : stage.findAll("Txt"))
            if (item->isVisible() && item->property("text").toString() != "" &&
                QRect(0, 0, 440, 750).contains(inScene(*item)))
                texts += item;
        return texts;
    }

    // No text is cut; gives how many were looked at.
    qsizetype expectRoomForTexts(double scale) {
        const QList<QQuickItem*> texts = shownTexts();
        for (QQuickItem* text : texts) {
            const std::string words = text->property("text").toString().toStdString();
            const QQuickItem* around = text->parentItem();
            while (around->height() <= 0)
                around = around->parentItem();
            EXPECT_LE(text->height(), around->height()) << words << " at " << scale;
            EXPECT_FALSE(text->property("truncated").toBool()) << words << " at " << scale;
        }
        return texts.size();
    }
    void expectWithinButtons(const QString& type, int count) {
        const QList<QQuickItem*> buttons = stage.findAll(type);
        EXPECT_EQ(buttons.size(), count);
        for (const QQuickItem* button : buttons)
            for (const QQuickItem* text : button->findChildren<QQuickItem*>())
                if (text->isVisible() && !text->property("truncated").isNull())
                    EXPECT_TRUE(inScene(*button).contains(inScene(*text)))
                        << text->property("text").toString().toStdString();
    }

    void fill() {
        stage.say("Summarise this.\n\n📎 Text capture, leaf-optics.md");
        stage.answer("> A quote.\n\n---\n\nSome `code` and [a link](https://a.b).\n\n- one\n- two",
                     false,
                     VorqFollowUp{"Which part should we take further?", {"Explain the green gap"}});
        PromptAttachment clip;
        clip.fileName = "leaf-optics.md";
        clip.textContent = "x";
        stage.panel->attachments().append(clip);
        PromptAttachment failed;
        failed.fileName = "locked.pdf";
        stage.panel->attachments().appendLoading(failed);
        stage.panel->attachments().fail(failed.id, "The file is locked with a password.");
        PromptAttachment loading;
        loading.fileName = "slides.pptx";
        stage.panel->attachments().appendLoading(loading);
        stage.state->hotKeyContext().held().hold("not shown", "Chromium");
    }

    PanelStage stage;
};

TEST_F(AccessLooksTest, InHighContrastAllThatIsReadHasSevenToOne) {
    fill();
    stage.look->setDesktop({.wantsHighContrast = true});
    stage.show();
    for (const auto theme : {PanelAppearance::Current, PanelAppearance::White}) {
        stage.state->appearance().setPanelAppearance(theme);
        const QImage shown = picture();
        const QList<QQuickItem*> texts = shownTexts();
        EXPECT_GE(texts.size(), 7);
        for (const QQuickItem* text : texts)
            EXPECT_GE(strongestIn(shown, inScene(*text)), Contrast::strongText)
                << text->property("text").toString().toStdString();
        const QRect reply = inScene(*stage.find("ReplyView"));
        EXPECT_EQ(strongestIn(shown, reply), 21);
    }
}

TEST_F(AccessLooksTest, InHighContrastWhatStandsApartHasAStrongEdge) {
    fill();
    stage.look->setDesktop({.wantsHighContrast = true});
    stage.show();
    for (const auto theme : {PanelAppearance::Current, PanelAppearance::White}) {
        stage.state->appearance().setPanelAppearance(theme);
        const QImage shown = picture();
        for (const char* type : {"PanelView", "AssistantReply", "UserBubble", "Pill",
                                 "AttachmentClip", "HeldCard", "Composer", "TextButton"}) {
            const QQuickItem* item = stage.find(type);
            ASSERT_NE(item, nullptr) << type;
            const QRect place = inScene(*item);
            // From outside across the right edge, half way down.
            const QRect across = QRect(place.right() - 3, place.center().y(), 7, 1) & shown.rect();
            EXPECT_GE(strongestIn(shown, across), Contrast::strongText) << type;
        }
    }
}

TEST_F(AccessLooksTest, InHighContrastNothingShinesThrough) {
    stage.look->setTier(PanelLook::Tier::Blur);
    stage.look->setDesktop({.wantsHighContrast = true});
    stage.state->appearance().setPanelBackgroundHex("#80808080");
    stage.show();
    for (const auto theme : {PanelAppearance::Current, PanelAppearance::White}) {
        stage.state->appearance().setPanelAppearance(theme);
        const QColor solid(theme == PanelAppearance::Current ? Qt::black : Qt::white);
        EXPECT_EQ(picture().pixelColor(220, 400), solid);
    }
}

TEST_F(AccessLooksTest, InHighContrastTheRingOfTheFocusCannotBeMissed) {
    stage.answer(samples::wideCode);
    stage.look->setDesktop({.wantsHighContrast = true});
    stage.show();
    for (const auto theme : {PanelAppearance::Current, PanelAppearance::White}) {
        stage.state->appearance().setPanelAppearance(theme);
        stage.find("ReplyView")->forceActiveFocus(Qt::TabFocusReason);
        const QImage shown = picture();
        const QQuickItem* ring = nullptr;
        for (const QQuickItem* each : stage.findAll("FocusRing"))
            if (each->isVisible()) ring = each;
        ASSERT_NE(ring, nullptr);
        const QRect place = inScene(*ring);
        const QColor ground = shown.pixelColor(place.right() + 2, place.center().y());
        for (int x = place.right() - 2; x <= place.right(); ++x)
            EXPECT_GE(Contrast::ratio(shown.pixelColor(x, place.center().y()), ground),
                      Contrast::strongText)
                << place.right() - x;
    }
}

TEST_F(AccessLooksTest, LargerTextHasRoomWhereverItStands) {
    fill();
    stage.show();
    stage.settle(100);
    const double usual = stage.find("ReplyView")->height();
    for (const double scale : {1.25, 1.5, 2.0}) {
        stage.look->setTextScale(scale);
        stage.settle(300);
        EXPECT_GT(stage.find("ReplyView")->height(), 1.1 * usual) << "applied to what stands";
        EXPECT_GE(expectRoomForTexts(scale), 6);
    }
}

TEST_F(AccessLooksTest, LargerTextHasRoomInTheTray) {
    stage.show();
    stage.panel->tray()->setShown(true);
    for (const double scale : {1.0, 1.5, 2.0}) {
        stage.look->setTextScale(scale);
        stage.settle(300);
        EXPECT_GE(expectRoomForTexts(scale), 6);
        expectWithinButtons("TrayRow", 3);
    }
}

TEST_F(AccessLooksTest, ALongAnswerHasRoomInItsPill) {
    stage.answer("A reply.", false,
                 VorqFollowUp{"",
                              {"Explain the green gap",
                               "Compare it with what happens in red algae and in brown ones"}});
    stage.show();
    for (const double scale : {1.0, 1.5, 2.0}) {
        stage.look->setTextScale(scale);
        stage.settle(300);
        EXPECT_GE(expectRoomForTexts(scale), 2);
        expectWithinButtons("Pill", 2);
    }
}

} // namespace
} // namespace vorq
