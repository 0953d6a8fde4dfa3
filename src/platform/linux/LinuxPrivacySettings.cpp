#include "platform/linux/LinuxPrivacySettings.h"

#include "platform/Workspace.h"
#include "platform/linux/atspi/AtSpiApplications.h"
#include "platform/linux/atspi/AtSpiBus.h"
#include "platform/linux/desktop/SpeakingToolkit.h"
#include "support/async/OnPool.h"

#include <QCoreApplication>

#include <utility>
#include <vector>

namespace vorq {

LinuxPrivacySettings::LinuxPrivacySettings(std::shared_ptr<AtSpiBus> bus, Workspace& workspace)
    : m_bus(std::move(bus)), m_workspace(workspace) {}

void LinuxPrivacySettings::openPrivacyPane(const QString&) {
    m_bus->switchOn();
}

QCoro::Task<QStringList> LinuxPrivacySettings::programsToRestart(std::stop_token stop) {
    const Workspace& workspace = m_workspace;
    std::vector<ProcessId> running = workspace.processesWithWindows();
    std::erase(running, static_cast<ProcessId>(QCoreApplication::applicationPid()));
    auto ask = [running, bus = m_bus](const std::stop_token& stopped) {
        AtSpiApplications applications(*bus);
        std::vector<ProcessId> silent;
        for (const ProcessId process : running)
            if (applications.serviceOf(process, stopped).isEmpty() && hasSpeakingToolkit(process))
                silent.push_back(process);
        return silent;
    };
    const std::vector<ProcessId> silent = co_await onPool(std::move(ask), stop);
    QStringList names;
    // What was not asked to the end says nothing.
    if (stop.stop_requested()) co_return names;
    for (const ProcessId process : silent)
        if (const auto application = workspace.application(process)) names += application->name;
    names.removeDuplicates();
    names.sort(Qt::CaseInsensitive);
    co_return names;
}

} // namespace vorq
