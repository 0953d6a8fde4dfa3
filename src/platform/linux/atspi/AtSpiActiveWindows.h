#pragma once

#include "platform/ProcessId.h"
#include "platform/linux/atspi/AtSpiFocusOrder.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace vorq {

/// The windows on the accessibility bus that say they are active, as their applications tell.
///
/// At most one should be, but applications tell of a change one after the other, and some claim for
/// a moment what they take back at once.
class AtSpiActiveWindows {
  public:
    void activated(const AtSpiRef& window, ProcessId process);
    void deactivated(const AtSpiRef& window);
    /// All of an application that is gone.
    void forget(const QString& service);

    [[nodiscard]] bool hasWindowOf(const QString& service) const;
    /// The process of the window that became active last; nothing while none is.
    [[nodiscard]] std::optional<ProcessId> front() const;

  private:
    struct Entry {
        AtSpiRef window;
        ProcessId process = 0;
    };

    // The latest last.
    std::vector<Entry> m_entries;
};

} // namespace vorq
