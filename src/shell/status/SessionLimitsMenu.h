#pragma once

#include "shell/status/FactMenu.h"

#include <QStringList>

namespace vorq {

/// Why parts of Vorq do not work in this session, as the ports of the system say it. Main thread
/// only.
class SessionLimitsMenu final : public FactMenu {
    Q_OBJECT

  public:
    SessionLimitsMenu();

    /// Without reasons the entry of the menu is hidden.
    void tell(const QStringList& reasons);
};

} // namespace vorq
