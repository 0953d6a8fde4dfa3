#include "areas/HubState.h"

#include "platform/Defaults.h"
#include "support/RawNames.h"
#include "support/StableSort.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr auto tasksLayouts = rawNames<HubTasksLayout>({{HubTasksLayout::Grid, "grid"},
                                                        {HubTasksLayout::Columns, "columns"},
                                                        {HubTasksLayout::List, "list"}});

const QString tasksLayoutKey = u"vorq.hubTasksLayout"_s;

// The file's own order is the one that is shown.
std::vector<HubAIChat> asTheyCome(std::vector<HubAIChat> chats) {
    return chats;
}

} // namespace

QString rawString(HubTasksLayout layout) {
    return tasksLayouts.nameOf(layout);
}

HubState::HubState(Defaults& defaults, const LibraryStore& store)
    : m_defaults(defaults),
      m_chatFile(store),
      m_follower(m_chatFile, m_chats, asTheyCome,
                 [this](auto changed) { followAndSave(std::move(changed)); }) {}

void HubState::restore() {
    assign(m_tasksLayout,
           tasksLayouts.caseOf(m_defaults.string(tasksLayoutKey)).value_or(HubTasksLayout::Grid));
}

void HubState::reloadHubAIChats(std::vector<HubAIChat> chats) {
    stableSort(chats,
               [](const HubAIChat& a, const HubAIChat& b) { return a.updatedAt > b.updatedAt; });
    const auto draft = std::ranges::find_if(m_chats.records(), [this](const HubAIChat& chat) {
        return !chat.isSaved && chat.id == m_activeChat;
    });
    if (draft != m_chats.records().end()) chats.insert(chats.begin(), *draft);
    m_chats.replace(std::move(chats));
}

std::vector<HubAIChat> HubState::loadHubAIChats() {
    std::vector<HubAIChat> chats = m_chatFile.load(m_chats.records());
    follow(std::nullopt);
    return chats;
}

void HubState::persistHubAIChats() {
    follow(m_chatFile.save(m_chats.records()));
}

void HubState::takeInChanges() {
    followAndSave(m_chatFile.takeIn(m_chats.records()));
}

void HubState::followChanges() {
    m_follower.look();
}

void HubState::followAndSave(std::optional<std::vector<HubAIChat>> changed) {
    follow(std::move(changed));
    if (m_chatFile.isDue()) persistHubAIChats();
}

bool HubState::retrySaves(std::chrono::milliseconds patience, bool isLast) {
    follow(m_chatFile.retry(m_chats.records(), patience, isLast));
    return !m_chatFile.unsaved();
}

void HubState::follow(std::optional<std::vector<HubAIChat>> changed) {
    if (changed) m_chats.replace(*std::move(changed));
    if (m_chatFile.unsaved()) emit savesAreDue();
}

void HubState::setHubTasksLayout(HubTasksLayout layout) {
    if (m_tasksLayout == layout) return;
    m_defaults.setString(tasksLayoutKey, rawString(layout));
    assign(m_tasksLayout, layout);
}

void HubState::setHubAIWorking(bool working) {
    assign(m_isWorking, working);
}
void HubState::setHubAIError(const QString& sentence) {
    assign(m_error, sentence);
}
void HubState::setHubSegmentRaw(const QString& raw) {
    assign(m_segmentRaw, raw);
}

void HubState::setActiveHubAIChatID(const std::optional<QUuid>& id) {
    assign(m_activeChat, id);
}

void HubState::setHubAIFocusNoteID(const std::optional<QUuid>& id) {
    assign(m_focusNote, id);
}

} // namespace vorq
