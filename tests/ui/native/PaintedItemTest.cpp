#include "ui/native/PaintedItem.h"

#include <QPainter>
#include <QQuickWindow>

#include <gtest/gtest.h>

namespace vorq {
namespace {

class CountingItem final : public PaintedItem {
  public:
    int painted = 0;

    void paint(QPainter* painter) override {
        ++painted;
        painter->fillRect(QRectF(0, 0, width(), height()), color);
    }

    QColor color = Qt::red;
};

class PaintedItemTest : public testing::Test {
  protected:
    PaintedItemTest() {
        m_window.setColor(Qt::black);
        m_window.resize(60, 60);
        m_item.setParentItem(m_window.contentItem());
        m_item.setSize({20.4, 20.4});
    }

    QImage shown() {
        m_window.show();
        return m_window.grabWindow();
    }

    QQuickWindow m_window;
    CountingItem m_item;
};

TEST_F(PaintedItemTest, ItShowsWhatItPaints) {
    const QImage picture = shown();
    EXPECT_EQ(picture.pixelColor(19, 19), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(21, 21), QColor(Qt::black));
    m_item.color = Qt::green;
    EXPECT_EQ(shown().pixelColor(10, 10), QColor(Qt::red)) << "nobody said that it has changed";
    m_item.update();
    EXPECT_EQ(shown().pixelColor(10, 10), QColor(Qt::green));
    m_item.setSize({40, 40});
    EXPECT_EQ(shown().pixelColor(39, 39), QColor(Qt::green));
    m_item.setSize({0, 40});
    EXPECT_EQ(shown().pixelColor(0, 0), QColor(Qt::black));
}

TEST_F(PaintedItemTest, HiddenItIsPaintedOnlyOnceItIsShown) {
    m_item.setVisible(false);
    shown();
    EXPECT_EQ(m_item.painted, 0);
    m_item.setVisible(true);
    EXPECT_EQ(shown().pixelColor(10, 10), QColor(Qt::red));
    EXPECT_EQ(m_item.painted, 1);
    m_item.setVisible(false);
    m_item.color = Qt::green;
    m_item.update();
    shown();
    EXPECT_EQ(m_item.painted, 1);
    m_item.setVisible(true);
    EXPECT_EQ(shown().pixelColor(10, 10), QColor(Qt::green));
    EXPECT_EQ(m_item.painted, 2);
}

TEST_F(PaintedItemTest, ShownAgainUnchangedItIsNotPaintedAgain) {
    shown();
    m_item.setVisible(false);
    shown();
    m_item.setVisible(true);
    EXPECT_EQ(shown().pixelColor(10, 10), QColor(Qt::red));
    EXPECT_EQ(m_item.painted, 1);
}

} // namespace
} // namespace vorq
