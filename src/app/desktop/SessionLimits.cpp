#include "app/desktop/SessionLimits.h"

#include "platform/Accessibility.h"
#include "platform/DesktopPlatform.h"
#include "platform/OverlayHints.h"
#include "platform/PrimarySelection.h"
#include "platform/Workspace.h"
#include "platform/copying/KeyPoster.h"
#include "platform/copying/Pasteboard.h"
#include "platform/pixels/ScreenCapture.h"

namespace vorq {

QStringList sessionLimits(DesktopPlatform& platform) {
    QStringList reasons;
    for (const PortSupport& support :
         {platform.workspace().supported(), platform.accessibility().supported(),
          platform.primarySelection().supported(), platform.pasteboard().supported(),
          platform.keyPoster().supported(), platform.screenCapture().supported(),
          platform.overlayHints().supported()})
        if (!support) reasons += support.error();
    reasons.removeDuplicates();
    return reasons;
}

} // namespace vorq
