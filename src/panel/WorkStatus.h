#pragma once

#include "platform/Clock.h"
#include "support/async/TaskSlot.h"

#include <QObject>
#include <QPointer>

namespace vorq {

class MessageList;

/// What a placeholder says while a turn is under way.
enum class VorqWorkStatus { Working, Analyzing, Finishing };

[[nodiscard]] QString rawString(VorqWorkStatus status);

/// The text shown in the placeholder.
[[nodiscard]] QString labelOf(VorqWorkStatus status);

/// The work status of the panel, which turns from working to analyzing by itself.
class WorkStatus final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString label READ label NOTIFY changed)

  public:
    WorkStatus(Clock& clock, const MessageList& messages);

    [[nodiscard]] VorqWorkStatus status() const { return m_status; }
    [[nodiscard]] QString label() const { return labelOf(m_status); }

    void beginPanelWorkStatus();
    void markPanelWorkFinishing();
    void endPanelWorkStatus();

  signals:
    void changed();

  private:
    static QCoro::Task<> analyzeLater(QPointer<WorkStatus> self, std::stop_token stop);
    void set(VorqWorkStatus status);

    Clock& m_clock;
    const MessageList& m_messages;
    VorqWorkStatus m_status = VorqWorkStatus::Working;
    TaskSlot m_panelWorkStatusTask;
};

} // namespace vorq
