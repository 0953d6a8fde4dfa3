#include "platform/linux/x11/X11InputWatch.h"

#include "platform/linux/x11/X11RawInput.h"

#include <xcb/xinput.h>

namespace vorq {

X11InputWatch::X11InputWatch()
    : m_events([this](const xcb_generic_event_t& event) {
          if ((event.response_type & 0x7f) != XCB_GE_GENERIC) return;
          const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
          if (generic.extension != m_opcode) return;
          m_wasUsed = true;
          selectRawInput(m_events.connection(), 0);
      }),
      m_opcode(rawInputOpcode(m_events.connection())) {
    if (m_opcode == 0) return;
    selectRawInput(m_events.connection(), XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS |
                                              XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS);
}

bool X11InputWatch::wasUsed() {
    m_events.catchUp();
    return m_wasUsed;
}

} // namespace vorq
