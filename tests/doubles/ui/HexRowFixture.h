#pragma once

#include "doubles/ui/PanelStage.h"

#include <QQmlComponent>
#include <QTest>

#include <gtest/gtest.h>

namespace vorq {

/// A row for a colour in a window of its own.
class HexRowTest : public testing::Test {
  protected:
    HexRowTest() {
        QQmlComponent component(stage.engine.get());
        component.setData(
            "import QtQuick\nimport Vorq\nItem { width: 600; height: 200; property alias row: r\n"
            "property bool mirrored: false; LayoutMirroring.enabled: mirrored\n"
            "LayoutMirroring.childrenInherit: true\n"
            "PanelHexColorRow { id: r; width: 600; text: 'Chat'; value: '#112233'\n"
            "onCommitted: hex => value = hex } }",
            QUrl(QStringLiteral("qrc:/test/HexRow.qml")));
        m_holder.reset(qobject_cast<QQuickItem*>(component.create()));
        if (!m_holder) qFatal("%s", qPrintable(component.errorString()));
        window.resize(600, 200);
        m_holder->setParentItem(window.contentItem());
        window.show();
        window.requestActivate();
        stage.settle(30);
        row = m_holder->property("row").value<QQuickItem*>();
        field = row->findChild<QQuickItem*>();
        for (QQuickItem* item : row->findChildren<QQuickItem*>())
            if (item->property("placeholderText") == "#RRGGBB") field = item;
    }

    void enter(const QString& text) {
        field->forceActiveFocus();
        field->setProperty("text", text);
        QTest::keyClick(&window, Qt::Key_Return);
    }
    [[nodiscard]] QString value() const { return row->property("value").toString(); }
    [[nodiscard]] bool bad() const { return row->property("bad").toBool(); }

    PanelStage stage;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> m_holder;
    QQuickItem* row = nullptr;
    QQuickItem* field = nullptr;
};

} // namespace vorq
