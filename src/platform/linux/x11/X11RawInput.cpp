#include "platform/linux/x11/X11RawInput.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace vorq {
namespace {

// From 2.1 on raw events come through while somebody holds the pointer.
constexpr std::uint16_t inputMajor = 2;
constexpr std::uint16_t inputMinor = 1;

} // namespace

std::uint8_t rawInputOpcode(const X11Connection& connection) {
    if (!connection.isUsable()) return 0;
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0) return 0;
    const auto cookie = xcb_input_xi_query_version(connection.get(), inputMajor, inputMinor);
    const X11Reply<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(connection.get(), cookie, nullptr));
    if (!version || version->major_version < inputMajor) return 0;
    const bool isRecent =
        version->major_version > inputMajor || version->minor_version >= inputMinor;
    return isRecent ? extension->major_opcode : std::uint8_t{0};
}

void selectRawInput(const X11Connection& connection, std::uint32_t mask) {
    if (!connection.isUsable()) return;
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } selection{.head = {.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1}, .mask = mask};
    xcb_input_xi_select_events(connection.get(), connection.root(), 1, &selection.head);
    xcb_flush(connection.get());
}

} // namespace vorq
