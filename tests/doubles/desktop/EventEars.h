#pragma once

#include "doubles/desktop/AccessibleTree.h"

#include <QDBusMessage>
#include <QObject>

#include <string>
#include <vector>

namespace vorq::desktop {

/// Listens to a program as a screen reader does: to what it announces, who gets the keyboard, where
/// the caret goes and what goes off or on. It lives on the event loop of the test.
class EventEars final : public QObject {
    Q_OBJECT

  public:
    /// The tree must outlive this object.
    explicit EventEars(AccessibleTree& tree);

    /// All notifications so far, as they read when they came up.
    [[nodiscard]] const std::vector<std::string>& announced() const { return m_announced; }

    /// What went off or on so far, as "Send off".
    [[nodiscard]] const std::vector<std::string>& switched() const { return m_switched; }

    /// What came of the last key, each with the line that it is about: "focus paragraph: A line",
    /// "caret: A line". Waits for something, and until no more comes. Throws if nothing does.
    [[nodiscard]] std::vector<std::string> heard();
    /// Waits until no more comes, and forgets it all.
    void forget();

  private slots:
    void stateChanged(const QDBusMessage& message);
    void caretMoved(const QDBusMessage& message);

  private:
    void waitForQuiet() const;

    AccessibleTree& m_tree;
    std::vector<std::string> m_announced;
    std::vector<std::string> m_switched;
    std::vector<std::string> m_heard;
};

} // namespace vorq::desktop
