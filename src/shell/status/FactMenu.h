#pragma once

#include <QMenu>

namespace vorq {

/// A menu that tells facts beside what can be chosen. A fact cannot be chosen, and is drawn to be
/// read all the same. Main thread only.
class FactMenu : public QMenu {
    Q_OBJECT

  public:
    using QMenu::QMenu;

    /// Whether the entry tells something rather than waits until it can be chosen.
    static void setFact(QAction* entry, bool isFact);

  protected:
    QAction* addFact(const QString& text);
    QAction* insertFact(QAction* before, const QString& text);

    void initStyleOption(QStyleOptionMenuItem* option, const QAction* entry) const override;
};

} // namespace vorq
