#include "shell/StatusMenu.h"

#include "core/VorqAppState.h"
#include "shell/Advice.h"

#include <QActionGroup>

namespace vorq {
namespace {

// Near the themes' own, which the pages know: where choosing begins.
constexpr QColor lightBackground(0xff, 0xff, 0xff);
constexpr QColor darkBackground(0x28, 0x2a, 0x32);
constexpr QColor lightUserBlock(0xdf, 0xe5, 0xff);
constexpr QColor darkUserBlock(0x3b, 0x47, 0x84);

// Menus underline the character behind a single "&".
QString menuText(QString text) {
    return text.replace(u'&', QStringLiteral("&&"));
}

} // namespace

StatusMenu::StatusMenu() : QMenu(QStringLiteral("Vorq")) {
    setAccessibleName(QStringLiteral("Vorq"));
    m_account = addLine(QStringLiteral("Starting…"));
    m_signInAdvice = addLine(menuText(signInAdvice));
    m_noticesEnd = addSeparator();
    connect(addAction(QStringLiteral("Show Vorq")), &QAction::triggered, this,
            &StatusMenu::showVorqChosen);
    m_clearChat = addAction(QStringLiteral("Clear Chat"));
    connect(m_clearChat, &QAction::triggered, this, &StatusMenu::clearChatChosen);
    addSeparator();
    addAppearance();
    m_accessibility = addAction(QString());
    connect(m_accessibility, &QAction::triggered, this, &StatusMenu::accessibilityChosen);
    m_signOut = addAction(QStringLiteral("Sign out"));
    connect(m_signOut, &QAction::triggered, this, &StatusMenu::signOutChosen);
    connect(addAction(QStringLiteral("Delete Vorq")), &QAction::triggered, this,
            &StatusMenu::deleteVorqChosen);
    addSeparator();
    connect(addAction(QStringLiteral("Quit Vorq")), &QAction::triggered, this,
            &StatusMenu::quitChosen);
    refreshAccount();
    refreshAccessibility();
}

// A line that only tells something.
QAction* StatusMenu::addLine(const QString& text) {
    QAction* line = addAction(text);
    line->setEnabled(false);
    return line;
}

void StatusMenu::addAppearance() {
    QMenu* customize = addMenu(QStringLiteral("Customize Vorq"));
    const auto addGroup = [&](const QString& heading) {
        customize->addAction(heading)->setEnabled(false);
        auto* group = new QActionGroup(this);
        group->setEnabled(false);
        return group;
    };
    const auto addChoices = [&](QActionGroup* group,
                                const QList<std::pair<QString, QString>>& all) {
        for (const auto& [title, raw] : all) {
            QAction* choice = group->addAction(title);
            choice->setCheckable(true);
            choice->setData(raw);
            customize->addAction(choice);
        }
    };
    m_themes = addGroup(QStringLiteral("Theme"));
    addChoices(m_themes, {{QStringLiteral("Light"), rawString(PanelAppearance::White)},
                          {QStringLiteral("Dark"), rawString(PanelAppearance::Current)}});
    customize->addSeparator();
    m_glasses = addGroup(QStringLiteral("Glass"));
    addChoices(m_glasses, {{QStringLiteral("Tinted"), rawString(PanelGlassStyle::Tinted)},
                           {QStringLiteral("Clear"), rawString(PanelGlassStyle::Clear)}});
    customize->addSeparator();
    addColors(customize);
}

void StatusMenu::addColors(QMenu* customize) {
    customize->addAction(QStringLiteral("Colors"))->setEnabled(false);
    const auto add = [&](const QString& title, auto chosen) {
        QAction* action = customize->addAction(title);
        action->setEnabled(false);
        connect(action, &QAction::triggered, this, chosen);
        m_colors += action;
    };
    add(QStringLiteral("Background…"), &StatusMenu::editBackgroundColor);
    add(QStringLiteral("Your Blocks…"), &StatusMenu::editUserBlockColor);
    add(QStringLiteral("Reset Custom Colors"),
        [this] { m_state->appearance().resetCustomPanelColors(); });
}

void StatusMenu::editBackgroundColor() {
    const AppearanceSettings& appearance = m_state->appearance();
    const bool isLight = appearance.panelAppearance() == PanelAppearance::White;
    m_background->open(isLight ? lightBackground : darkBackground);
}

void StatusMenu::editUserBlockColor() {
    const AppearanceSettings& appearance = m_state->appearance();
    const bool isLight = appearance.panelAppearance() == PanelAppearance::White;
    m_userBlock->open(isLight ? lightUserBlock : darkUserBlock);
}

void StatusMenu::bindAppState(VorqAppState& state) {
    if (m_state == &state) return;
    m_state = &state;
    AppearanceSettings* appearance = &state.appearance();
    connect(m_themes, &QActionGroup::triggered, appearance, [appearance](const QAction* choice) {
        const bool isLight = choice->data() == rawString(PanelAppearance::White);
        appearance->setPanelAppearance(isLight ? PanelAppearance::White : PanelAppearance::Current);
    });
    connect(m_glasses, &QActionGroup::triggered, appearance, [appearance](const QAction* choice) {
        const bool isClear = choice->data() == rawString(PanelGlassStyle::Clear);
        appearance->setPanelGlassStyle(isClear ? PanelGlassStyle::Clear : PanelGlassStyle::Tinted);
    });
    m_background.emplace(
        QStringLiteral("Background"),
        PanelColorEdit::Setting{
            [appearance] { return appearance->panelBackgroundHex(); },
            [appearance](const QString& hex) { appearance->setPanelBackgroundHex(hex); }});
    m_userBlock.emplace(
        QStringLiteral("Your Blocks"),
        PanelColorEdit::Setting{
            [appearance] { return appearance->panelUserBlockHex(); },
            [appearance](const QString& hex) { appearance->setPanelUserBlockHex(hex); }});
    for (QAction* action : m_colors)
        action->setEnabled(true);
    m_themes->setEnabled(true);
    m_glasses->setEnabled(true);
    connect(appearance, &AppearanceSettings::changed, this, &StatusMenu::refreshAppearance);
    const AccountSession* account = &state.account();
    connect(account, &AccountSession::signedInChanged, this, &StatusMenu::refreshAccount);
    connect(account, &AccountSession::displayNameChanged, this, &StatusMenu::refreshAccount);
    connect(&state.permissions(), &Permissions::changed, this, &StatusMenu::refreshAccessibility);
    refreshAppearance();
    refreshAccount();
    refreshAccessibility();
}

void StatusMenu::refreshAccount() {
    const bool isSignedIn = m_state && m_state->account().signedIn();
    m_clearChat->setEnabled(isSignedIn);
    m_signInAdvice->setVisible(m_state && !isSignedIn);
    m_signOut->setVisible(isSignedIn);
    if (!m_state) return;
    const QString name = menuText(m_state->account().displayName());
    m_account->setText(isSignedIn ? QStringLiteral("Signed in as %1").arg(name)
                                  : QStringLiteral("Not signed in"));
}

// There is something to choose only while it is off.
void StatusMenu::refreshAccessibility() {
    const bool isEnabled =
        m_state && m_state->permissions().textCapturePermission() == PermissionState::Granted;
    m_accessibility->setText(isEnabled ? QStringLiteral("Accessibility: Enabled")
                                       : QStringLiteral("Accessibility: Disabled"));
    m_accessibility->setEnabled(m_state && !isEnabled);
}

void StatusMenu::refreshAppearance() {
    const AppearanceSettings& appearance = m_state->appearance();
    for (QAction* choice : m_themes->actions())
        choice->setChecked(choice->data() == appearance.panelAppearanceRaw());
    for (QAction* choice : m_glasses->actions())
        choice->setChecked(choice->data() == appearance.panelGlassStyleRaw());
    m_colors.last()->setEnabled(!appearance.panelBackgroundHex().isEmpty() ||
                                !appearance.panelUserBlockHex().isEmpty() ||
                                !appearance.panelAssistantBlockHex().isEmpty());
}

void StatusMenu::setHotKeyNotices(const QStringList& notices) {
    qDeleteAll(m_notices);
    m_notices.clear();
    for (const QString& notice : notices) {
        auto* line = new QAction(notice, this);
        line->setEnabled(false);
        insertAction(m_noticesEnd, line);
        m_notices += line;
    }
}

} // namespace vorq
