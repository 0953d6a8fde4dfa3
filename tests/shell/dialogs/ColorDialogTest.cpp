#include "doubles/ui/PanelStage.h"

#include <QApplication>
#include <QColorDialog>
#include <QQmlComponent>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

class ColorDialogTest : public testing::Test {
  protected:
    ColorDialogTest() {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QQmlComponent component(stage.engine.get());
        component.setData("import QtQuick\nimport Vorq\n"
                          "PanelHexColorRow { width: 600; text: 'Chat'\n"
                          "onCommitted: hex => value = hex }",
                          QUrl(u"qrc:/test/HexRow.qml"_s));
        m_row.reset(qobject_cast<QQuickItem*>(component.create()));
        if (!m_row) qFatal("%s", qPrintable(component.errorString()));
    }

    static QColorDialog* dialog() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* found = qobject_cast<QColorDialog*>(widget); found && found->isVisible())
                return found;
        return nullptr;
    }
    QColorDialog* open() {
        for (QQuickItem* item : m_row->findChildren<QQuickItem*>())
            if (item->property("text") == "Choose Chat") QMetaObject::invokeMethod(item, "clicked");
        return dialog();
    }
    void setValue(const QString& hex) { m_row->setProperty("value", hex); }
    [[nodiscard]] QString value() const { return m_row->property("value").toString(); }

    PanelStage stage;

  private:
    std::unique_ptr<QQuickItem> m_row;
};

TEST_F(ColorDialogTest, TheWellOpensItAtTheColourItShows) {
    setValue("#112233");
    QColorDialog* shown = open();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->currentColor(), QColor(0x11, 0x22, 0x33));
    EXPECT_EQ(shown->windowTitle(), "Chat");
    EXPECT_EQ(open(), shown);
}

TEST_F(ColorDialogTest, WhatIsBeingChosenIsStoredAtOnce) {
    QColorDialog* shown = open();
    ASSERT_TRUE(shown);
    EXPECT_EQ(value(), "");
    shown->setCurrentColor(QColor(0xF9, 0x73, 0x16));
    EXPECT_EQ(value(), "#F97316");
    shown->accept();
    EXPECT_EQ(value(), "#F97316");
    EXPECT_FALSE(dialog());
}

TEST_F(ColorDialogTest, WithoutAChoiceTheFormerColourComesBack) {
    for (const char* former : {"", "#112233"}) {
        setValue(former);
        QColorDialog* shown = open();
        ASSERT_TRUE(shown);
        shown->setCurrentColor(Qt::red);
        EXPECT_EQ(value(), "#FF0000");
        shown->reject();
        EXPECT_EQ(value(), former);
        EXPECT_TRUE(QTest::qWaitFor([] { return dialog() == nullptr; }));
    }
}

} // namespace
} // namespace vorq
