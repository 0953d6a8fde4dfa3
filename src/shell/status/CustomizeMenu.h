#pragma once

#include "shell/dialogs/PanelColorEdit.h"
#include "shell/status/FactMenu.h"

#include <QPointer>

#include <optional>

class QActionGroup;

namespace vorq {

class AppearanceSettings;

/// The menu of what the user can have of the panel's look. Main thread only.
class CustomizeMenu final : public FactMenu {
    Q_OBJECT

  public:
    CustomizeMenu();

    /// Nothing can be chosen before; the settings must outlive the menu.
    void bind(AppearanceSettings& appearance);

  signals:
    /// A colour is being chosen, and no longer.
    void colorEditBegan();
    void colorEditEnded();

  private:
    QActionGroup* addChoices(const QString& heading,
                             const QList<std::pair<QString, QString>>& titlesAndValues);
    void addColors();
    void connectChoices();
    void makeColorEdits();
    void refresh();

    QPointer<AppearanceSettings> m_appearance;
    QActionGroup* m_themes;
    QActionGroup* m_glasses;
    QAction* m_editBackground;
    QAction* m_editUserBlock;
    QAction* m_resetColors;
    std::optional<PanelColorEdit> m_background;
    std::optional<PanelColorEdit> m_userBlock;
};

} // namespace vorq
