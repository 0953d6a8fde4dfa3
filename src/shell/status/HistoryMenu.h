#pragma once

#include "shell/status/FactMenu.h"
#include "shell/status/TwoLineStyle.h"

#include <QPointer>
#include <QUuid>

#include <utility>
#include <vector>

namespace vorq {

class VorqAppState;

/// The conversations that are kept, the newest first, each with the day and time at which it was.
/// Choosing one brings it back in the panel. Main thread only.
class HistoryMenu final : public FactMenu {
    Q_OBJECT

  public:
    HistoryMenu();

    /// Nothing can be chosen before.
    void bind(VorqAppState& state);

    /// Shows what is kept now. Whoever opens the menu sees it.
    void rebuildHistorySubmenu();

  private:
    using Row = std::pair<QUuid, QString>; // of a chat, and its text

    [[nodiscard]] std::vector<Row> rows() const;
    void openHistoryChat(const QUuid& id);

    TwoLineStyle m_style;
    QPointer<VorqAppState> m_state;
    std::vector<Row> m_shown;
};

} // namespace vorq
