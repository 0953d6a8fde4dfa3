#pragma once

#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace vorq {

class Defaults;

enum class HubTasksLayout { Grid, Columns, List };

/// "grid", "columns" or "list".
[[nodiscard]] QString rawString(HubTasksLayout layout);

/// The hub area: what the hub shows and whether it is at work. Main thread only.
class HubState final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString hubTasksLayout READ hubTasksLayoutRaw NOTIFY changed)
    Q_PROPERTY(bool isHubAIWorking READ isHubAIWorking WRITE setHubAIWorking NOTIFY changed)
    Q_PROPERTY(QString hubAIError READ hubAIError WRITE setHubAIError NOTIFY changed)
    Q_PROPERTY(QString hubSegmentRaw READ hubSegmentRaw WRITE setHubSegmentRaw NOTIFY changed)

  public:
    /// The defaults must outlive this object.
    explicit HubState(Defaults& defaults) : m_defaults(defaults) {}

    void restore();

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

  private:
    template<typename Value>
    void assign(Value& field, const Value& value) {
        if (field == value) return;
        field = value;
        emit changed();
    }

    Defaults& m_defaults;
    HubTasksLayout m_tasksLayout = HubTasksLayout::Grid;
    bool m_isWorking = false;
    QString m_error;
    QString m_segmentRaw = QStringLiteral("ai");
    std::optional<QUuid> m_activeChat;
    std::optional<QUuid> m_focusNote;
};

} // namespace vorq
