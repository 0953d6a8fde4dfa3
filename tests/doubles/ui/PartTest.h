#pragma once

#include "doubles/ui/PanelStage.h"

#include <QAccessible>
#include <QQuickWindow>

#include <gtest/gtest.h>

#include <memory>

namespace vorq {

/// Parts of a page in a window of 600 by 400 points, met with mouse, keys and a screen reader.
class PartTest : public testing::Test {
  protected:
    PartTest();
    ~PartTest() override;

    /// Shows the body of a `partPage`.
    void show(const QString& body);

    /// The item of this object name, which must be there.
    [[nodiscard]] QQuickItem& part(const QString& name);
    /// The first item below one of the QML type; null without one.
    [[nodiscard]] QQuickItem* within(QQuickItem& item, const QString& type);
    /// The first visible control or text of these words; null without one.
    [[nodiscard]] QQuickItem* saying(const QString& words);

    [[nodiscard]] static QPoint middle(const QQuickItem& item);
    void click(const QQuickItem& item);
    void hover(const QQuickItem& item);
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// As the desktop repeats a key that is held.
    void repeatKey(Qt::Key key);
    void type(const QString& text);

    [[nodiscard]] int presses() const { return m_root->property("presses").toInt(); }
    [[nodiscard]] QString said() const { return m_root->property("said").toString(); }
    /// What a screen reader meets.
    [[nodiscard]] static QAccessibleInterface& heard(QQuickItem& item);
    static void pressAsScreenReader(QQuickItem& item);
    [[nodiscard]] bool hasRing(QQuickItem& item);
    /// What the tip says; "" without one.
    [[nodiscard]] QString tip();
    /// Waits for one.
    [[nodiscard]] bool tipComes();

    PanelStage stage;
    QQuickWindow window;

  private:
    std::unique_ptr<QQuickItem> m_root;
};

} // namespace vorq
