#pragma once

#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

namespace vorq {

inline void pressEntry(QMenu& menu, QAction* action) {
    const QPoint at = menu.actionGeometry(action).center();
    QTest::mouseMove(&menu, at);
    QTest::mouseClick(&menu, Qt::LeftButton, {}, at);
}

/// Presses an entry of an open menu, or of one that opens out of it, with the mouse; false without
/// such an entry.
inline bool pressEntry(QMenu& menu, const QString& text) {
    const QList<QAction*> actions = menu.actions();
    const auto own = std::ranges::find(actions, text, &QAction::text);
    if (own != actions.end()) {
        EXPECT_TRUE((*own)->isEnabled() && (*own)->isVisible()) << text.toStdString();
        pressEntry(menu, *own);
        return true;
    }
    for (QAction* action : actions) {
        QMenu* inner = action->menu();
        const auto holds = [&](const QAction* entry) { return entry->text() == text; };
        if (inner == nullptr || !std::ranges::any_of(inner->actions(), holds)) continue;
        pressEntry(menu, action);
        return QTest::qWaitFor([&] { return inner->isVisible(); }) && pressEntry(*inner, text);
    }
    return false;
}

} // namespace vorq
