#include "shell/hotkeys/HotKeyHandler.h"

#include "shell/notices/ShellLog.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {

using namespace std::chrono_literals;

namespace {

// The server is asked so often whether a key has become free. Nobody tells.
constexpr Clock::Duration retryInterval = 10s;

const HotKeyEntry* entryOf(HotKeyId id) {
    const auto found = std::ranges::find(hotKeyTable, id, &HotKeyEntry::id);
    return found == hotKeyTable.end() ? nullptr : &*found;
}

} // namespace

HotKeyHandler::HotKeyHandler(GlobalHotKeys& hotKeys, Workspace& workspace, Clock& clock,
                             QObject* parent)
    : QObject(parent), m_hotKeys(hotKeys), m_workspace(workspace), m_clock(clock) {
    connect(&m_hotKeys, &GlobalHotKeys::pressed, this, &HotKeyHandler::takePress);
    connect(&m_hotKeys, &GlobalHotKeys::availabilityChanged, this,
            &HotKeyHandler::takeAvailability);
}

HotKeyHandler::~HotKeyHandler() {
    if (m_retry) m_clock.cancel(*m_retry);
}

void HotKeyHandler::registerHotKeys() {
    m_missing.clear();
    m_isRegistered = true;
    const GlobalHotKeys::Outcome handler = m_hotKeys.installEventHandler();
    m_hasHandler = handler.has_value();
    if (!handler)
        qCWarning(shellLog, "Vorq failed to install hotkey event handler: %d",
                  handler.error().status);
    for (const HotKeyEntry& entry : hotKeyTable)
        if (handler && isWanted(entry) && !registerEntry(entry)) m_missing.insert(entry.action);
    retryLater();
    emit noticesChanged();
}

bool HotKeyHandler::registerEntry(const HotKeyEntry& entry) {
    const char letter = entry.chord.letter;
    const GlobalHotKeys::Outcome outcome = m_hotKeys.registerHotKey(entry.chord, entry.id);
    if (outcome)
        qCInfo(shellLog, "Vorq registered Command+Shift+%c %s.", letter, entry.kind);
    else
        qCWarning(shellLog, "Vorq failed to register Command+Shift+%c hotkey: %d", letter,
                  outcome.error().status);
    return outcome.has_value();
}

void HotKeyHandler::setOffersWriting(bool offersWriting) {
    if (std::exchange(m_offersWriting, offersWriting) == offersWriting) return;
    if (!m_isRegistered || !m_hasHandler) return emit noticesChanged();
    for (const HotKeyEntry& entry : hotKeyTable) {
        if (entry.action != HotKeyAction::Rewrite) continue;
        m_missing.erase(entry.action);
        if (!offersWriting)
            m_hotKeys.unregisterHotKey(entry.id);
        else if (!registerEntry(entry))
            m_missing.insert(entry.action);
    }
    retryLater();
    emit noticesChanged();
}

bool HotKeyHandler::isWanted(const HotKeyEntry& entry) const {
    return m_offersWriting || entry.action != HotKeyAction::Rewrite;
}

void HotKeyHandler::retryLater() {
    if (m_retry || m_missing.empty()) return;
    m_retry = m_clock.after(retryInterval, [this] {
        m_retry.reset();
        retryMissing();
        retryLater();
    });
}

void HotKeyHandler::retryMissing() {
    const auto isWon = [this](HotKeyAction action) {
        const auto entry = std::ranges::find(hotKeyTable, action, &HotKeyEntry::action);
        if (!m_hotKeys.registerHotKey(entry->chord, entry->id)) return false;
        qCInfo(shellLog, "Vorq registered Command+Shift+%c %s.", entry->chord.letter, entry->kind);
        return true;
    };
    if (std::erase_if(m_missing, isWon) > 0) emit noticesChanged();
}

std::set<HotKeyAction> HotKeyHandler::registered() const {
    std::set<HotKeyAction> actions;
    if (!m_isRegistered || !m_hasHandler) return actions;
    for (const HotKeyEntry& entry : hotKeyTable)
        if (isWanted(entry) && !m_missing.contains(entry.action)) actions.insert(entry.action);
    return actions;
}

std::set<HotKeyAction> HotKeyHandler::offered() const {
    std::set<HotKeyAction> actions;
    for (const HotKeyEntry& entry : hotKeyTable)
        if (isOffered(entry)) actions.insert(entry.action);
    return actions;
}

bool HotKeyHandler::isOffered(const HotKeyEntry& entry) const {
    const bool isForNotes =
        entry.action == HotKeyAction::SaveNote || entry.action == HotKeyAction::PushNote;
    return isWanted(entry) && (m_offersNotes || !isForNotes);
}

void HotKeyHandler::unregisterHotKeys() {
    m_isRegistered = false;
    m_missing.clear();
    for (const HotKeyEntry& entry : hotKeyTable)
        m_hotKeys.unregisterHotKey(entry.id);
}

QStringList HotKeyHandler::notices() const {
    QStringList notices;
    QStringList verbs;
    for (const HotKeyEntry& entry : hotKeyTable) {
        if (!isOffered(entry)) continue;
        const QString verb = QString::fromLatin1(entry.verb);
        verbs += verb;
        if (m_missing.contains(entry.action))
            notices += tr("%1 is taken by another program. Bind a key of your desktop "
                          "to: %2")
                           .arg(keysOf(entry), verb);
    }
    if (m_hasHandler) return notices;
    return {tr("This desktop keeps global keys to itself. Bind keys of your desktop "
               "to: %1")
                .arg(verbs.join(u", "_s))};
}

// The source is read while the press is fresh; what follows can wait.
void HotKeyHandler::takePress(HotKeyId id) {
    const HotKeyEntry* entry = entryOf(id);
    if (entry == nullptr) return;
    if (m_diversion) return m_diversion(entry->action);
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
    retryLater();
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
