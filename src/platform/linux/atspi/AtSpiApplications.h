#pragma once

#include "platform/Accessibility.h"
#include "platform/ProcessId.h"
#include "platform/linux/atspi/AtSpiBus.h"
#include "platform/linux/atspi/AtSpiText.h"

#include <QHash>

#include <optional>
#include <stop_token>
#include <vector>

namespace vorq {

/// The applications on the accessibility bus, and which of their elements has the focus. Vorq
/// itself is not among them: it must not be asked while it waits. On one thread at a time.
class AtSpiApplications {
  public:
    explicit AtSpiApplications(AtSpiBus& bus) : m_bus(bus) {}

    [[nodiscard]] AtSpiBus& bus() { return m_bus; }

    /// The name of a process on the bus, "" if it shows nothing.
    [[nodiscard]] QString serviceOf(ProcessId process, const std::stop_token& stop);

    /// Whoever had the focus last; without any event, the application with an active window.
    [[nodiscard]] QString focusedService(const std::stop_token& stop);

    [[nodiscard]] std::optional<ProcessId> processOf(const QString& service,
                                                     const std::stop_token& stop);
    [[nodiscard]] AtSpiToolkit toolkitOf(const QString& service, const std::stop_token& stop);

    /// The window that is active, else the first that shows.
    [[nodiscard]] std::optional<AtSpiRef> activeWindow(const QString& service,
                                                       const std::stop_token& stop);

    /// Finds the element with the focus of an application that has told nothing of it, so that it
    /// is known when the application has lost it.
    void learnFocus(ProcessId process, const std::stop_token& stop);

    /// The element with the focus: as the events told, as the application finds it, or as a search
    /// through the active window does.
    [[nodiscard]] std::optional<AtSpiRef> focusedElement(const QString& service,
                                                         const std::stop_token& stop);

  private:
    [[nodiscard]] std::vector<std::optional<ProcessId>>
    processesOf(const std::vector<QString>& services, const std::stop_token& stop);
    [[nodiscard]] std::vector<QString> registered(const std::stop_token& stop);
    [[nodiscard]] std::optional<AtSpiRef> choose(const std::vector<AtSpiRef>& candidates,
                                                 const std::stop_token& stop);
    [[nodiscard]] std::vector<AtSpiRef> searchFocused(const AtSpiRef& window,
                                                      const std::stop_token& stop);

    // What was learnt on a former connection is of other applications.
    void forgetFormerBus();

    AtSpiBus& m_bus;
    int m_connection = 0;
    // Names on one bus are never given twice.
    QHash<QString, ProcessId> m_processes;
    QHash<QString, AtSpiToolkit> m_toolkits;
};

} // namespace vorq
