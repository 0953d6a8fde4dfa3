#pragma once

#include <QObject>
#include <QString>

namespace vorq {

class MessageList;

/// What goes from the panel to the rest of the desktop: texts to the clipboard, links to the
/// browser. Main thread only.
class PanelOutlet final : public QObject {
    Q_OBJECT

  public:
    /// The messages must outlive this object.
    explicit PanelOutlet(const MessageList& messages) : m_messages(messages) {}

    Q_INVOKABLE void copyText(const QString& text) const;
    /// Copies the last reply, as much of it as there is; false, and the clipboard as it was, if
    /// there is none. The greeting is no reply.
    Q_INVOKABLE bool copyLastReply() const;
    /// Opens a web address in the user's browser; any other kind of address is left alone.
    Q_INVOKABLE void openLink(const QString& address) const;

  private:
    const MessageList& m_messages;
};

} // namespace vorq
