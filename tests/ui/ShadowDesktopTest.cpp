// Shadows as a graphics card draws them, where a point is more than a pixel.

#include "ui/PanelStage.h"

#include <QQmlComponent>
#include <QTest>

#include <gmock/gmock.h>

namespace vorq {
namespace {

constexpr int tolerance = 4; // of 255

class ShadowDesktop : public testing::Test {
  protected:
    ShadowDesktop() {
        QQmlComponent component(stage.engine.get());
        component.setData("import QtQuick\nimport Vorq\n"
                          "Item { width: 300; height: 200\n"
                          "Rectangle { z: -2; anchors.fill: parent }\n"
                          "Rectangle { id: plate; x: 50; y: 50; width: 200; height: 100;"
                          " radius: 20 }\n"
                          "Shadow { target: plate; level: 2; radius: 25 } }",
                          QUrl(QStringLiteral("qrc:/test/Shadow.qml")));
        m_scene.reset(qobject_cast<QQuickItem*>(component.create()));
        if (!m_scene) qFatal("%s", qPrintable(component.errorString()));
        window.resize(300, 200);
        m_scene->setParentItem(window.contentItem());
    }

    void show() {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        EXPECT_EQ(window.rendererInterface()->graphicsApi(), QSGRendererInterface::OpenGL);
    }

    PanelStage stage;
    QQuickWindow window;

  private:
    std::unique_ptr<QQuickItem> m_scene;
};

TEST_F(ShadowDesktop, IsTheSameAtAllCorners) {
    show();
    const QImage shown = window.grabWindow();
    ASSERT_GT(shown.width(), 300);
    int darkest = 255;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width() / 2; ++x) {
            const int left = qGray(shown.pixel(x, y));
            const int right = qGray(shown.pixel(shown.width() - 1 - x, y));
            ASSERT_NEAR(left, right, tolerance) << "at " << x << ", " << y;
            darkest = std::min(darkest, left);
        }
    EXPECT_LT(darkest, 240);
}

TEST_F(ShadowDesktop, IsThereAgainAfterTheWindowGaveUpWhatItHeld) {
    window.setPersistentGraphics(false);
    window.setPersistentSceneGraph(false);
    show();
    const QImage before = window.grabWindow();
    window.hide();
    QTest::qWait(100);
    show();
    EXPECT_EQ(window.grabWindow(), before);
}

} // namespace
} // namespace vorq
