#include "shell/status/HistoryMenu.h"

#include "core/VorqAppState.h"
#include "support/Date.h"

#include <QLocale>

namespace vorq {
namespace {

constexpr qsizetype longestTitle = 56; // of those that were not made here

QString dateText(Date date) {
    return QLocale().toString(dateTimeOf(date).toLocalTime(), QLocale::ShortFormat);
}

// Menus underline the character behind a single "&", and show what is behind a tab on its own.
QString rowText(const SavedChat& chat) {
    QString title = chat.title.simplified();
    if (title.size() > longestTitle) title = title.left(longestTitle - 1) + u'…';
    return title.replace(u'&', QStringLiteral("&&")) + u'\t' + dateText(chat.createdAt);
}

} // namespace

HistoryMenu::HistoryMenu() {
    setTitle(tr("History"));
    setStyle(&m_style);
    addFact(tr("No saved chats"));
    connect(this, &QMenu::aboutToShow, this, &HistoryMenu::rebuildHistorySubmenu);
}

void HistoryMenu::bind(VorqAppState& state) {
    m_state = &state;
}

std::vector<HistoryMenu::Row> HistoryMenu::rows() const {
    std::vector<Row> rows;
    if (!m_state) return rows;
    for (const SavedChat& chat : m_state->library().savedChats().records())
        rows.emplace_back(chat.id, rowText(chat));
    return rows;
}

// A bar that draws the menu asks for it often, and loses its place in one that is made anew.
void HistoryMenu::rebuildHistorySubmenu() {
    std::vector<Row> now = rows();
    if (now == m_shown) return;
    m_shown = std::move(now);
    clear();
    if (m_shown.empty()) addFact(tr("No saved chats"));
    for (const auto& [id, text] : m_shown)
        connect(addAction(text), &QAction::triggered, this, [this, id] { openHistoryChat(id); });
}

void HistoryMenu::openHistoryChat(const QUuid& id) {
    if (m_state) m_state->panelChats().loadPanelChatFromHistory(id);
}

} // namespace vorq
