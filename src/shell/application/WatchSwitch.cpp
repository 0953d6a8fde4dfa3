#include "shell/application/WatchSwitch.h"

#include "areas/Previews.h"
#include "capture/selection/CaptureLog.h"
#include "capture/watch/FrontmostWatchService.h"
#include "shell/status/StatusItem.h"

using namespace Qt::StringLiterals;

namespace vorq {

WatchSwitch::WatchSwitch(const Services& services) : m_services(services) {
    FrontmostWatchService* watch = &m_services.watch;
    connect(watch, &FrontmostWatchService::changed, this,
            [this, watch] { m_services.statusItem.setWatchStatus(watch->statusMessage()); });
    CaptureLog* log = &m_services.log;
    watch->setOnSample([log](const WatchSample& sample) {
        log->appendCaptureDebug(u"watch: pid=%1 selection=%2 title=%3"_s.arg(sample.pid)
                                    .arg(sample.selection.size())
                                    .arg(sample.windowTitle.size()));
    });
    connect(&m_services.previews, &Previews::changed, this, &WatchSwitch::apply);
    apply();
}

void WatchSwitch::apply() {
    if (m_services.previews.isOn(Preview::Watch))
        m_services.watch.start();
    else
        m_services.watch.stop();
}

} // namespace vorq
