#pragma once

#include "doubles/ui/PanelStage.h"

#include <QTest>

#include <gtest/gtest.h>

namespace vorq {

/// The panel, with turns that the user types and what they press of them.
class TypedTurns : public testing::Test {
  protected:
    TypedTurns() {
        stage.show();
        stage.settle(50);
    }

    void enter(const QString& text) {
        for (const QChar character : text)
            QTest::keyClick(stage.window.get(), character.toLatin1());
        QTest::keyClick(stage.window.get(), Qt::Key_Return);
        settle();
    }
    /// What the program says by itself is typed out.
    void settle() {
        stage.clock.advance(std::chrono::seconds(5));
        stage.settle(50);
    }
    void click(QQuickItem* item) {
        ASSERT_TRUE(item);
        stage.drawFrame();
        QTest::mouseClick(stage.window.get(), Qt::LeftButton, {},
                          item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
        stage.settle(300);
    }

    PanelStage stage;
};

} // namespace vorq
