#include "areas/LibraryAreas.h"

#include "library/records/LegacyChats.h"
#include "platform/Defaults.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using namespace std::chrono_literals;

// A program that ends has no window that could hang.
constexpr std::chrono::milliseconds patienceAtEnd = 5s;

const QString migratedKey = u"vorq.migratedPanelChatsToHub.v1"_s;

} // namespace

LibraryAreas::LibraryAreas(Clock& clock, Defaults& defaults,
                           const QString& applicationSupportFolder)
    : m_defaults(defaults),
      m_store(applicationSupportFolder),
      m_library(m_store, clock),
      m_hub(defaults, m_store),
      m_tasks(m_store, clock),
      m_trackers(m_store, clock),
      m_retries(clock, [this] { return retrySaves(0ms, false); }) {
    const auto retryLater = [this] { m_retries.request(); };
    QObject::connect(&m_library, &LibraryState::savesAreDue, &m_library, retryLater);
    QObject::connect(&m_hub, &HubState::savesAreDue, &m_hub, retryLater);
    QObject::connect(&m_tasks, &TaskState::savesAreDue, &m_tasks, retryLater);
    QObject::connect(&m_trackers, &TrackerState::savesAreDue, &m_trackers, retryLater);
}

void LibraryAreas::reloadLibrary() {
    m_isLoaded = true;
    m_library.reload();
    m_tasks.reload();
    m_trackers.reload();

    std::vector<HubAIChat> chats = m_hub.loadHubAIChats();
    const std::vector<SavedChat> legacy = legacyPanelChats();
    const std::vector<HubAIChat> converted = hubChatsFromPanel(legacy, chats);
    std::ranges::copy(converted, std::back_inserter(chats));
    m_hub.reloadHubAIChats(std::move(chats));
    if (!converted.empty()) m_hub.persistHubAIChats();
    // They leave their old file only when they are in the new one.
    if (!legacy.empty() && isInFile(converted)) m_library.clearChats();
}

void LibraryAreas::watchLibrary() {
    if (!m_isLoaded) reloadLibrary();
    m_watch.emplace(m_store.folder(), [this] { followChanges(); });
    takeInChanges();
}

void LibraryAreas::finish() {
    if (m_isLoaded) retrySaves(patienceAtEnd, true);
}

void LibraryAreas::setNoticeHandler(std::function<void(const QString& sentence)> notice) {
    QObject::connect(&m_library, &LibraryState::noticed, &m_library, std::move(notice));
}

bool LibraryAreas::retrySaves(std::chrono::milliseconds patience, bool isLast) {
    bool areSaved = true;
    // Who waited in vain for one list does not wait for the next.
    const auto retry = [&](auto& area) {
        if (!area.retrySaves(areSaved ? patience : 0ms, isLast)) areSaved = false;
    };
    retry(m_library);
    retry(m_hub);
    retry(m_tasks);
    retry(m_trackers);
    return areSaved;
}

void LibraryAreas::takeInChanges() {
    m_library.takeInChanges();
    m_tasks.takeInChanges();
    m_trackers.takeInChanges();
    m_hub.takeInChanges();
}

// Notes and chats can be many; tasks and trackers are what fits on a board.
void LibraryAreas::followChanges() {
    m_library.followChanges();
    m_tasks.takeInChanges();
    m_trackers.takeInChanges();
    m_hub.followChanges();
}

// What the panel kept before there was a hub. Asked once per user; whatever happens afterwards, a
// later launch does not ask again.
std::vector<SavedChat> LibraryAreas::legacyPanelChats() {
    if (m_defaults.boolean(migratedKey).value_or(false)) return {};
    std::vector<SavedChat> legacy = m_store.loadChats();
    m_defaults.setBoolean(migratedKey, true);
    return legacy;
}

bool LibraryAreas::isInFile(const std::vector<HubAIChat>& chats) const {
    if (chats.empty()) return true;
    const std::vector<HubAIChat> written = m_store.loadAIChats();
    return std::ranges::all_of(chats, [&written](const HubAIChat& chat) {
        return std::ranges::find(written, chat.id, &HubAIChat::id) != written.end();
    });
}

} // namespace vorq
