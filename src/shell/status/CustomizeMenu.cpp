#include "shell/status/CustomizeMenu.h"

#include "areas/AppearanceSettings.h"
#include "shell/look/ThemeColors.h"

#include <QActionGroup>

namespace vorq {

CustomizeMenu::CustomizeMenu() : FactMenu(tr("Customize Vorq")) {
    m_themes = addChoices(tr("Theme"), {{tr("Light"), rawString(PanelAppearance::White)},
                                        {tr("Dark"), rawString(PanelAppearance::Current)}});
    addSeparator();
    m_glasses = addChoices(tr("Glass"), {{tr("Tinted"), rawString(PanelGlassStyle::Tinted)},
                                         {tr("Clear"), rawString(PanelGlassStyle::Clear)}});
    addSeparator();
    addColors();
    refresh();
}

QActionGroup* CustomizeMenu::addChoices(const QString& heading,
                                        const QList<std::pair<QString, QString>>& titlesAndValues) {
    addFact(heading);
    auto* group = new QActionGroup(this);
    for (const auto& [title, value] : titlesAndValues) {
        QAction* choice = group->addAction(title);
        choice->setCheckable(true);
        choice->setData(value);
        addAction(choice);
    }
    return group;
}

void CustomizeMenu::addColors() {
    addFact(tr("Colors"));
    m_editBackground = addAction(tr("Background…"));
    m_editUserBlock = addAction(tr("Your Blocks…"));
    m_resetColors = addAction(tr("Reset Custom Colors"));
}

void CustomizeMenu::bind(AppearanceSettings& appearance) {
    if (m_appearance == &appearance) return;
    m_appearance = &appearance;
    makeColorEdits();
    connectChoices();
    connect(&appearance, &AppearanceSettings::changed, this, &CustomizeMenu::refresh);
    refresh();
}

void CustomizeMenu::connectChoices() {
    AppearanceSettings* appearance = m_appearance;
    connect(m_themes, &QActionGroup::triggered, appearance, [appearance](const QAction* choice) {
        const bool isLight = choice->data() == rawString(PanelAppearance::White);
        appearance->setPanelAppearance(isLight ? PanelAppearance::White : PanelAppearance::Current);
    });
    connect(m_glasses, &QActionGroup::triggered, appearance, [appearance](const QAction* choice) {
        const bool isClear = choice->data() == rawString(PanelGlassStyle::Clear);
        appearance->setPanelGlassStyle(isClear ? PanelGlassStyle::Clear : PanelGlassStyle::Tinted);
    });
    connect(m_editBackground, &QAction::triggered, appearance, [this] {
        const bool isLight = m_appearance->panelAppearance() == PanelAppearance::White;
        m_background->open(isLight ? ThemeColors::lightGlass : ThemeColors::darkGlass);
    });
    connect(m_editUserBlock, &QAction::triggered, appearance, [this] {
        const bool isLight = m_appearance->panelAppearance() == PanelAppearance::White;
        m_userBlock->open(isLight ? ThemeColors::lightUserBlock : ThemeColors::darkUserBlock);
    });
    connect(m_resetColors, &QAction::triggered, appearance,
            &AppearanceSettings::resetCustomPanelColors);
}

void CustomizeMenu::makeColorEdits() {
    AppearanceSettings* appearance = m_appearance;
    m_background.emplace(
        tr("Background"),
        PanelColorEdit::Setting{
            [appearance] { return appearance->panelBackgroundHex(); },
            [appearance](const QString& hex) { appearance->previewPanelBackgroundHex(hex); },
            [appearance](const QString& hex) { appearance->setPanelBackgroundHex(hex); }});
    m_userBlock.emplace(
        tr("Your Blocks"),
        PanelColorEdit::Setting{
            [appearance] { return appearance->panelUserBlockHex(); },
            [appearance](const QString& hex) { appearance->previewPanelUserBlockHex(hex); },
            [appearance](const QString& hex) { appearance->setPanelUserBlockHex(hex); }});
    for (PanelColorEdit* edit : {&*m_background, &*m_userBlock}) {
        connect(edit, &PanelColorEdit::began, this, &CustomizeMenu::colorEditBegan);
        connect(edit, &PanelColorEdit::ended, this, &CustomizeMenu::colorEditEnded);
    }
}

void CustomizeMenu::refresh() {
    const bool isBound = !m_appearance.isNull();
    for (QActionGroup* group : {m_themes, m_glasses})
        group->setEnabled(isBound);
    for (QAction* action : {m_editBackground, m_editUserBlock, m_resetColors})
        action->setEnabled(isBound);
    if (!isBound) return;
    for (QAction* choice : m_themes->actions())
        choice->setChecked(choice->data() == m_appearance->panelAppearanceRaw());
    for (QAction* choice : m_glasses->actions())
        choice->setChecked(choice->data() == m_appearance->panelGlassStyleRaw());
    m_resetColors->setEnabled(!m_appearance->panelBackgroundHex().isEmpty() ||
                              !m_appearance->panelUserBlockHex().isEmpty() ||
                              !m_appearance->panelAssistantBlockHex().isEmpty());
}

} // namespace vorq
