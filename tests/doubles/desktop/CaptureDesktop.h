#pragma once

#include "capture/selection/AccessibleSelection.h"
#include "doubles/desktop/Applications.h"
#include "doubles/desktop/DesktopSession.h"
#include "platform/linux/atspi/AtSpiAccessibility.h"
#include "platform/linux/x11/X11PrimarySelection.h"

#include <gmock/gmock.h>

#include <memory>

namespace vorq::desktop {

/// A connection to the accessibility bus that is there.
inline std::unique_ptr<AtSpiAccessibility> connected() {
    auto accessibility = std::make_unique<AtSpiAccessibility>();
    DesktopSession::waitUntil("the accessibility bus", [&] { return accessibility->isTrusted(); });
    return accessibility;
}

/// What the hot key would read in a process; as long as it takes.
inline QString focusedText(Accessibility& accessibility, std::int32_t process) {
    return captureSelectedTextFromFocusedElement(
        {.accessibility = accessibility, .process = process, .stop = {}});
}

/// Waits for that to become the text, since applications tell of a change some time after it.
inline void waitForFocusedText(Accessibility& accessibility, std::int32_t process,
                               const QString& expected) {
    QString last;
    try {
        DesktopSession::waitUntil("the selection", [&] {
            last = focusedText(accessibility, process);
            return last == expected;
        });
    } catch (const std::runtime_error&) {
        ADD_FAILURE() << "expected \"" << expected.toStdString() << "\", read \""
                      << last.toStdString() << '"';
    }
}

} // namespace vorq::desktop
