#pragma once

#include "areas/HubLists.h"
#include "areas/LibraryFollower.h"
#include "library/store/LibraryFile.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <optional>

namespace vorq {

class Defaults;

enum class HubTasksLayout { Grid, Columns, List };

/// "grid", "columns" or "list".
[[nodiscard]] QString rawString(HubTasksLayout layout);

/// The hub area: its conversations, what the hub shows and whether it is at work. Main thread only.
class HubState final : public QObject {
    Q_OBJECT
    Q_PROPERTY(vorq::HubChatList* hubAIChats READ chatModel CONSTANT)
    Q_PROPERTY(QString hubTasksLayout READ hubTasksLayoutRaw NOTIFY changed)
    Q_PROPERTY(bool isHubAIWorking READ isHubAIWorking WRITE setHubAIWorking NOTIFY changed)
    Q_PROPERTY(QString hubAIError READ hubAIError WRITE setHubAIError NOTIFY changed)
    Q_PROPERTY(QString hubSegmentRaw READ hubSegmentRaw WRITE setHubSegmentRaw NOTIFY changed)

  public:
    /// Both must outlive this object. The list of chats is empty until it is reloaded.
    HubState(Defaults& defaults, const LibraryStore& store);

    void restore();

    [[nodiscard]] const HubChatList& hubAIChats() const { return m_chats; }
    [[nodiscard]] HubChatList* chatModel() { return &m_chats; }

    /// Tries again to write what could not be written. False if it still cannot.
    bool retrySaves(std::chrono::milliseconds patience, bool isLast);

    /// The chats as they stand in the file, with what is not written yet.
    [[nodiscard]] std::vector<HubAIChat> loadHubAIChats();
    /// Takes in the chats of the file and those that join them, the latest first. Of what is not
    /// saved only the active chat stays, before all others.
    void reloadHubAIChats(std::vector<HubAIChat> chats);

    /// Writes the chats that are saved.
    void persistHubAIChats();

    /// Takes in what other programs have changed in the file since.
    void takeInChanges();
    /// The same, in a while: a large file is read without holding this thread.
    void followChanges();

    [[nodiscard]] HubTasksLayout hubTasksLayout() const { return m_tasksLayout; }
    [[nodiscard]] QString hubTasksLayoutRaw() const { return rawString(m_tasksLayout); }
    [[nodiscard]] bool isHubAIWorking() const { return m_isWorking; }
    [[nodiscard]] const QString& hubAIError() const { return m_error; }
    [[nodiscard]] const QString& hubSegmentRaw() const { return m_segmentRaw; }
    [[nodiscard]] std::optional<QUuid> activeHubAIChatID() const { return m_activeChat; }
    [[nodiscard]] std::optional<QUuid> hubAIFocusNoteID() const { return m_focusNote; }

    void setHubTasksLayout(HubTasksLayout layout);
    void setHubAIWorking(bool working);
    void setHubAIError(const QString& sentence);
    void setHubSegmentRaw(const QString& raw);
    void setActiveHubAIChatID(const std::optional<QUuid>& id);
    void setHubAIFocusNoteID(const std::optional<QUuid>& id);

  signals:
    void changed();
    /// Something could not be written, or is in memory alone; it is for retrySaves().
    void savesAreDue();

  private:
    template<typename Value>
    void assign(Value& field, const Value& value) {
        if (field == value) return;
        field = value;
        emit changed();
    }

    void follow(std::optional<std::vector<HubAIChat>> changed);
    void followAndSave(std::optional<std::vector<HubAIChat>> changed);

    Defaults& m_defaults;
    LibraryFile<HubAIChat> m_chatFile;
    HubChatList m_chats;
    HubTasksLayout m_tasksLayout = HubTasksLayout::Grid;
    bool m_isWorking = false;
    QString m_error;
    QString m_segmentRaw = QStringLiteral("ai");
    std::optional<QUuid> m_activeChat;
    std::optional<QUuid> m_focusNote;
    LibraryFollower<HubAIChat> m_follower;
};

} // namespace vorq
