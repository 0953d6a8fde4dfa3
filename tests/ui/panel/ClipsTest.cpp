// The clips of the composer, pressed and by the keyboard.

#include "doubles/ui/PanelStage.h"

#include <QAccessible>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using testing::ElementsAre;

class ClipsTest : public testing::Test {
  protected:
    ClipsTest() {
        stage.show();
        stage.settle(50);
    }

    void choose(const QStringList& names) {
        QList<QUrl> files;
        for (const QString& name : names)
            files += QUrl::fromLocalFile(u"/files/"_s + name);
        stage.panel->intake()->attachFiles(files);
        settle();
    }
    void settle() {
        stage.clock.settle();
        stage.settle(50);
        stage.drawFrame();
    }
    void fail(std::size_t reading, const QString& sentence) {
        stage.reader.fail(reading, sentence);
        settle();
    }
    void key(Qt::Key key) {
        QTest::keyClick(stage.window.get(), key);
        settle();
    }
    [[nodiscard]] QString focused() {
        const QQuickItem* item = stage.window->activeFocusItem();
        const QString label = item->property("label").toString();
        return label.isEmpty() ? item->property("text").toString() : label;
    }
    [[nodiscard]] QQuickItem* button(const QString& text) {
        for (const char* type : {"IconButton", "TextButton"})
            for (QQuickItem* item : stage.findAll(type))
                if (item->isVisible() && item->property("text").toString() == text) return item;
        return nullptr;
    }
    void press(const QString& text) {
        QQuickItem* item = button(text);
        ASSERT_TRUE(item) << qPrintable(text);
        QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
        settle();
    }
    [[nodiscard]] QQuickItem* clip(int row) { return stage.findAll("AttachmentClip").value(row); }
    [[nodiscard]] std::vector<std::string> labels() {
        std::vector<std::string> all;
        for (const QQuickItem* item : stage.findAll("AttachmentClip"))
            all.push_back(item->property("label").toString().toStdString());
        return all;
    }
    [[nodiscard]] bool shows(QQuickItem* within, const QString& text) {
        for (QQuickItem* item : within->findChildren<QQuickItem*>())
            if (item->isVisible() && item->property("text").toString() == text &&
                !item->property("truncated").toBool())
                return true;
        return false;
    }
    [[nodiscard]] bool hasBars(QQuickItem* within) {
        for (QQuickItem* bars : stage.findAll("WorkBars"))
            if (within->isAncestorOf(bars) && bars->isVisible()) return true;
        return false;
    }

    PanelStage stage;
};

TEST_F(ClipsTest, BarsShowThatAClipIsLoading) {
    choose({"a.pdf"});
    ASSERT_TRUE(clip(0));
    EXPECT_TRUE(shows(clip(0), "a.pdf"));
    EXPECT_TRUE(hasBars(clip(0)));
    stage.reader.finish(0);
    settle();
    EXPECT_FALSE(hasBars(clip(0)));
}

TEST_F(ClipsTest, TheCrossOfALoadingClipStopsItsReading) {
    choose({"a.pdf", "b.pdf"});
    press("Cancel a.pdf");
    EXPECT_TRUE(stage.reader.readings()[0]->wasStopped());
    EXPECT_FALSE(stage.reader.readings()[1]->wasStopped());
    EXPECT_THAT(labels(), ElementsAre("b.pdf"));
    QTest::keyClick(stage.window.get(), Qt::Key_A);
    EXPECT_EQ(stage.panel->prompt().toLower(), "a") << "the draft has the keyboard";
}

TEST_F(ClipsTest, AFailedClipSaysWhyAndIsTriedAgain) {
    choose({"a.pdf"});
    fail(0, "The file is locked with a password that is not known here.");
    EXPECT_TRUE(shows(clip(0), "The file is locked with a password that is not known here."));
    press("Try a.pdf again");
    EXPECT_TRUE(hasBars(clip(0)));
    stage.reader.finish(1);
    settle();
    EXPECT_EQ(stage.panel->attachments().attachments().size(), 1);
}

TEST_F(ClipsTest, AFailedClipIsRemoved) {
    choose({"a.pdf"});
    fail(0, "It is locked.");
    press("Remove a.pdf");
    EXPECT_EQ(stage.panel->attachments().count(), 0);
}

TEST_F(ClipsTest, KeysLeadToTheClipsAndTakeThemOff) {
    choose({"a", "b", "c"});
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "a");
    key(Qt::Key_Right);
    EXPECT_EQ(focused(), "b");
    key(Qt::Key_Left);
    key(Qt::Key_Left);
    EXPECT_EQ(focused(), "a") << "it is the first";
    key(Qt::Key_Delete);
    EXPECT_EQ(focused(), "b") << "the next has it";
    key(Qt::Key_Right);
    key(Qt::Key_Backspace);
    EXPECT_THAT(labels(), ElementsAre("b"));
    EXPECT_EQ(focused(), "b");
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "Cancel b");
    key(Qt::Key_Space);
    EXPECT_EQ(stage.panel->attachments().count(), 0);
    EXPECT_EQ(stage.reader.underWay(), 0);
    QTest::keyClick(stage.window.get(), Qt::Key_X);
    EXPECT_EQ(stage.panel->prompt().toLower(), "x");
}

TEST_F(ClipsTest, KeysTryAFailedClipAgain) {
    choose({"a"});
    fail(0, "It is locked.");
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "a");
    key(Qt::Key_Return);
    fail(1, "It is locked.");
    EXPECT_EQ(focused(), "a");
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "Try a again");
    key(Qt::Key_Space);
    EXPECT_EQ(stage.reader.underWay(), 1);
    EXPECT_EQ(focused(), "a") << "the button is gone";
}

TEST_F(ClipsTest, EnterWaitsForTheClipsInSight) {
    stage.panel->setPrompt("Why?");
    choose({"a.pdf"});
    key(Qt::Key_Return);
    QQuickItem* notice = stage.find("WaitingNotice");
    EXPECT_TRUE(notice->isVisible());
    EXPECT_TRUE(shows(notice, "Goes out once all is attached."));
    EXPECT_FALSE(button("Send")->isEnabled());
    press("Don’t send yet");
    EXPECT_FALSE(notice->isVisible());
    key(Qt::Key_Return);
    EXPECT_TRUE(notice->isVisible());
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "Don’t send yet");
    key(Qt::Key_Space);
    EXPECT_FALSE(notice->isVisible());
    EXPECT_EQ(stage.panel->prompt(), "Why?");
    key(Qt::Key_Return);
    EXPECT_TRUE(notice->isVisible());
    stage.reader.finish(0);
    settle();
    EXPECT_FALSE(notice->isVisible());
    EXPECT_EQ(stage.panel->prompt(), "");
    EXPECT_EQ(stage.state->panel().messages().messages().front().text, "Why?\n\n📎 a.pdf");
}

TEST_F(ClipsTest, ManyScrollAndTheOneWithTheKeyboardIsInSight) {
    QStringList names;
    for (int i = 0; i < 60; ++i)
        names += u"document number %1.pdf"_s.arg(i);
    choose(names);
    EXPECT_LT(stage.find("Composer")->height(), 260);
    QQuickItem* tray = stage.find("ClipTray");
    const auto isInSight = [&](QQuickItem* item) {
        return QRectF(0, 0, tray->width(), tray->height())
            .contains(item->mapRectToItem(tray, QRectF(0, 0, item->width(), item->height())));
    };
    EXPECT_TRUE(isInSight(clip(59))) << "what was chosen last";
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    EXPECT_EQ(focused(), "document number 0.pdf");
    EXPECT_TRUE(isInSight(clip(0)));
}

TEST_F(ClipsTest, OneThatFailsBelowTheOthersIsInSightWithItsReason) {
    QStringList names;
    for (int i = 0; i < 20; ++i)
        names += u"document number %1.pdf"_s.arg(i);
    choose(names);
    for (std::size_t before = 0; before < 19; ++before) {
        stage.reader.finish(before);
        settle();
    }
    fail(19,
         "Only files can be attached, and this is a folder with other files and folders in it.");
    stage.drawFrame();
    const QQuickItem* tray = stage.find("ClipTray");
    const QRectF place =
        clip(19)->mapRectToItem(tray, {0, 0, clip(19)->width(), clip(19)->height()});
    EXPECT_TRUE(QRectF(0, 0, tray->width(), tray->height()).contains(place));
}

TEST_F(ClipsTest, WithLessMotionTheBarsStandStill) {
    stage.look->setDesktop({.allowsAnimations = false});
    choose({"a.pdf"});
    const auto opacities = [this] {
        std::vector<double> all;
        for (QQuickItem* bars : stage.findAll("WorkBars"))
            for (const QQuickItem* bar : bars->childItems())
                if (clip(0)->isAncestorOf(bars) && bar->property("name").isValid())
                    all.push_back(bar->opacity());
        return all;
    };
    EXPECT_THAT(opacities(), ElementsAre(1, 1, 1));
    stage.settle(400);
    EXPECT_THAT(opacities(), ElementsAre(1, 1, 1));
}

class HeardClipsTest : public ClipsTest {
  protected:
    HeardClipsTest() { QAccessible::setActive(true); }
    ~HeardClipsTest() override { QAccessible::setActive(false); }

    [[nodiscard]] QString heard(QAccessible::Text text) {
        return QAccessible::queryAccessibleInterface(clip(0))->text(text);
    }
};

TEST_F(HeardClipsTest, AClipTellsItsState) {
    choose({"a.pdf"});
    EXPECT_EQ(heard(QAccessible::Name), "a.pdf, loading");
    fail(0, "It is locked.");
    EXPECT_EQ(heard(QAccessible::Name), "a.pdf, not attached");
    EXPECT_EQ(heard(QAccessible::Description), "It is locked.");
    stage.panel->attachments().retry(0);
    settle();
    stage.reader.finish(1);
    settle();
    EXPECT_EQ(heard(QAccessible::Name), "a.pdf");
}

} // namespace
} // namespace vorq
