#include "shell/HotKeyHandler.h"

#include <algorithm>

namespace vorq {
namespace {

const HotKeyEntry* entryOf(HotKeyId id) {
    const auto found = std::ranges::find(hotKeyTable, id, &HotKeyEntry::id);
    return found == hotKeyTable.end() ? nullptr : &*found;
}

} // namespace

HotKeyHandler::HotKeyHandler(GlobalHotKeys& hotKeys, Workspace& workspace, QObject* parent)
    : QObject(parent), m_hotKeys(hotKeys), m_workspace(workspace) {
    connect(&m_hotKeys, &GlobalHotKeys::pressed, this, &HotKeyHandler::takePress);
    connect(&m_hotKeys, &GlobalHotKeys::availabilityChanged, this,
            &HotKeyHandler::takeAvailability);
}

void HotKeyHandler::registerHotKeys() {
    m_missing.clear();
    const GlobalHotKeys::Outcome handler = m_hotKeys.installEventHandler();
    m_hasHandler = handler.has_value();
    if (handler)
        std::ranges::for_each(hotKeyTable,
                              [this](const HotKeyEntry& entry) { registerHotKey(entry); });
    else
        qWarning("Vorq failed to install hotkey event handler: %d", handler.error().status);
    emit noticesChanged();
}

void HotKeyHandler::registerHotKey(const HotKeyEntry& entry) {
    const char letter = entry.chord.letter;
    const GlobalHotKeys::Outcome outcome = m_hotKeys.registerHotKey(entry.chord, entry.id);
    if (outcome) return qInfo("Vorq registered Command+Shift+%c %s.", letter, entry.kind);
    m_missing.insert(entry.action);
    qWarning("Vorq failed to register Command+Shift+%c hotkey: %d", letter, outcome.error().status);
}

void HotKeyHandler::unregisterHotKeys() {
    for (const HotKeyEntry& entry : hotKeyTable)
        m_hotKeys.unregisterHotKey(entry.id);
}

QStringList HotKeyHandler::notices() const {
    QStringList notices;
    QStringList verbs;
    for (const HotKeyEntry& entry : hotKeyTable) {
        const QString verb = QString::fromLatin1(entry.verb);
        verbs += verb;
        if (m_missing.contains(entry.action))
            notices += QStringLiteral("Super+Shift+%1 is taken by another program. Bind a key of "
                                      "your desktop to: %2")
                           .arg(QLatin1Char(entry.chord.letter))
                           .arg(verb);
    }
    if (m_hasHandler) return notices;
    return {QStringLiteral("This desktop keeps global keys to itself. Bind keys of your desktop "
                           "to: %1")
                .arg(verbs.join(QStringLiteral(", ")))};
}

// The source is read while the press is fresh; what follows can wait.
void HotKeyHandler::takePress(HotKeyId id) {
    const HotKeyEntry* entry = entryOf(id);
    if (entry == nullptr) return;
    const HotKeySource source = sourceNow();
    QMetaObject::invokeMethod(
        this, [this, entry, source] { emit activated(entry->action, source); },
        Qt::QueuedConnection);
}

void HotKeyHandler::takeAvailability(HotKeyId id, bool isAvailable) {
    const HotKeyEntry* entry = entryOf(id);
    if (entry == nullptr) return;
    if (isAvailable)
        m_missing.erase(entry->action);
    else
        m_missing.insert(entry->action);
    emit noticesChanged();
}

HotKeySource HotKeyHandler::sourceNow() const {
    HotKeySource source{.process = m_workspace.frontmostProcess(), .bundleIdentifier = {}};
    if (!source.process) return source;
    if (const auto application = m_workspace.application(*source.process))
        source.bundleIdentifier = application->identifier;
    return source;
}

} // namespace vorq
