// Shadows where a point is more than a pixel. Run with and without a graphics card.

#include "doubles/ui/PanelStage.h"

#include <QQmlComponent>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int tolerance = 4; // of 255

class Shadow : public testing::Test {
  protected:
    Shadow() {
        QQmlComponent component(stage.engine.get());
        component.setData("import QtQuick\nimport Vorq\n"
                          "Item { width: 300; height: 200\n"
                          "Rectangle { z: -2; anchors.fill: parent }\n"
                          "Rectangle { id: plate; x: 50; y: 50; width: 200; height: 100;"
                          " radius: 20 }\n"
                          "Shadow { target: plate; level: 2; radius: 22 } }",
                          QUrl(u"qrc:/test/Shadow.qml"_s));
        m_scene.reset(qobject_cast<QQuickItem*>(component.create()));
        if (!m_scene) qFatal("%s", qPrintable(component.errorString()));
        window.resize(300, 200);
        m_scene->setParentItem(window.contentItem());
    }

    void show() {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        const bool isOpenGl = qEnvironmentVariableIsSet("QSG_RHI_BACKEND");
        EXPECT_EQ(window.rendererInterface()->graphicsApi(),
                  isOpenGl ? QSGRendererInterface::OpenGL : QSGRendererInterface::Software);
    }

    [[nodiscard]] QQuickItem& plate() const { return *m_scene->childItems().at(1); }
    [[nodiscard]] QQuickItem& shadow() const { return *m_scene->childItems().at(2); }

    PanelStage stage;
    QQuickWindow window;

  private:
    std::unique_ptr<QQuickItem> m_scene;
};

TEST_F(Shadow, IsTheSameAtAllCorners) {
    show();
    const QImage shown = window.grabWindow();
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

// Where its parts meet, nothing may be seen of it.
TEST_F(Shadow, IsEvenAlongItsEdges) {
    plate().setHeight(52);
    shadow().setProperty("level", 1);
    show();
    const double scale = window.effectiveDevicePixelRatio();
    const auto pixel = [scale](double points) { return qRound(points * scale); };
    for (const double shift : {0.0, 0.4, 1.0, 1.5, 2.6}) {
        plate().setPosition({50 + shift, 50 + shift});
        const QImage shown = window.grabWindow();
        const auto isNear = [&](QPoint one, QPoint other) {
            return std::abs(qGray(shown.pixel(one)) - qGray(shown.pixel(other))) <= 2 * tolerance;
        };
        for (const int y : {pixel(103 + shift), pixel(105 + shift)})
            for (int x = pixel(75); x < pixel(225); ++x)
                ASSERT_TRUE(isNear({x, y}, {x - 1, y})) << x << ", " << y << " with " << shift;
        for (const int x : {pixel(48 + shift), pixel(252 + shift)})
            for (int y = pixel(72 + shift); y < pixel(82 + shift); ++y)
                ASSERT_TRUE(isNear({x, y}, {x, y - 1})) << x << ", " << y << " with " << shift;
    }
}

TEST_F(Shadow, IsThereAgainAfterTheWindowGaveUpWhatItHeld) {
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
