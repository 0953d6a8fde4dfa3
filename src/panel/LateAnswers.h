#pragma once

#include "areas/LibraryState.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace vorq {

class PanelConversation;

/// Says in the panel that something is saved when that has become true later than it was asked
/// for, unless the conversation where it was asked for is over by then. Main thread only.
class LateAnswers final : public QObject {
    Q_OBJECT

  public:
    /// The conversation must outlive it.
    explicit LateAnswers(PanelConversation& panel) : m_panel(panel) {}

    using Saved = void (LibraryState::*)();

    /// Says the sentence once, as soon as the library tells that the list is saved.
    void sayOnce(const QString& sentence, LibraryState& library, Saved saved);

  private:
    void say(const QString& sentence);
    void forget();

    PanelConversation& m_panel;
    QStringList m_waiting;
    std::unique_ptr<QObject> m_conversation; // as long as which what is waited for is said
};

} // namespace vorq
