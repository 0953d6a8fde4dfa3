#include "app/desktop/DesktopParts.h"

#include "app/desktop/DesktopCapture.h"
#include "app/desktop/DesktopPanel.h"
#include "app/desktop/PanelRenderer.h"
#include "platform/linux/LinuxPermissionProbe.h"
#include "platform/linux/atspi/AtSpiBus.h"
#include "platform/linux/desktop/SessionKind.h"
#include "platform/linux/wayland/WaylandWorkspace.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11Workspace.h"
#include "shell/window/DeferredPanel.h"
#include "ui/bindings/UiContext.h"

namespace vorq {
namespace {

// What several parts look at.
struct SharedParts {
    const SessionKind session = sessionKind();
    std::shared_ptr<AtSpiBus> accessibilityBus =
        std::make_shared<AtSpiBus>(AtSpiAccessibility::defaultSessionBus());
    X11Screens screens;
    PanelShowings showings;
    DesktopCapture* capture = nullptr;
};

} // namespace

DesktopParts standardParts() {
    chooseRenderer();
    prepareUi();
    const auto shared = std::make_shared<SharedParts>();
    return {.makeWorkspace = [shared](Clock& clock) -> std::unique_ptr<Workspace> {
                if (shared->session == SessionKind::X11) return std::make_unique<X11Workspace>();
                return std::make_unique<WaylandWorkspace>(clock, shared->accessibilityBus);
            },
            .makeCapture =
                [shared](const CaptureContext& context) {
                    auto capture = std::make_unique<DesktopCapture>(DesktopCapture::Services{
                        context.clock, context.paths, context.workspace, shared->screens,
                        shared->showings, context.settings, shared->accessibilityBus});
                    shared->capture = capture.get();
                    return capture;
                },
            .makeProbe =
                [shared] {
                    return std::make_unique<LinuxPermissionProbe>(shared->capture->accessibility());
                },
            .enableTextCapture =
                [shared] { shared->capture->accessibility().enableToolkitAccessibility(); },
            .whenTrustChanges =
                [shared](QObject* context, const std::function<void()>& callback) {
                    shared->capture->accessibility().whenTrustChanges(context, callback);
                },
            .makeNotes = [](const NotesContext&) { return std::make_unique<NoNoteCapture>(); },
            .makePanel =
                [shared](const PanelContext& context) {
                    return std::make_unique<DeferredPanel>(context.clock, [shared, context] {
                        return std::make_unique<DesktopPanel>(context, shared->screens,
                                                              shared->showings, shared->session);
                    });
                }};
}

} // namespace vorq
