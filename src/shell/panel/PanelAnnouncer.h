#pragma once

#include <QObject>
#include <QString>
#include <QUuid>

#include <optional>

namespace vorq {

class MessageList;

/// Says what becomes of a prompt to those who do not see it: that it is being worked on, and the
/// reply once it stands there as a whole, as plain words. A conversation that is loaded says
/// nothing. Main thread only.
class PanelAnnouncer : public QObject {
    Q_OBJECT

  public:
    /// The messages must outlive this object.
    explicit PanelAnnouncer(const MessageList& messages);

  signals:
    void announced(const QString& sentence);

  private:
    void messagesCame(int first, int last);
    void messagesChanged(int first, int last);
    void announceOnceComplete();

    const MessageList& m_messages;
    std::optional<QUuid> m_awaited; // the reply that is not complete yet
    bool m_isLookingAgain = false;
};

} // namespace vorq
