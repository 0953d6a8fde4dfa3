#include "doubles/wayland/VirtualSeat.h"

#include "doubles/wayland/WaylandClient.h"

#include <QThread>

#include <array>
#include <linux/input-event-codes.h>
#include <stdexcept>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace vorq::desktop {
namespace {

// The compositor and its clients look up the rest.
constexpr std::string_view keymap = "xkb_keymap { xkb_keycodes { include \"evdev\" };"
                                    " xkb_types { include \"complete\" };"
                                    " xkb_compatibility { include \"complete\" };"
                                    " xkb_symbols { include \"pc+us\" }; };";
constexpr std::uint32_t textKeymap = 1;

unsigned modifierOf(unsigned code) {
    switch (code) {
    case VirtualSeat::shift:
        return 0x1;
    case VirtualSeat::control:
        return 0x4;
    case VirtualSeat::super:
        return 0x40;
    default:
        return 0;
    }
}

// Requests as they stand on the wire, up to the last that is used here: 0 keymap, 1 key,
// 2 modifiers.
const std::array<wl_message, 3> keyboardRequests{
    {{"keymap", "uhu", nullptr}, {"key", "uuu", nullptr}, {"modifiers", "uuuu", nullptr}}};
const wl_interface keyboardInterface{"zwp_virtual_keyboard_v1", 1, 3,
                                     keyboardRequests.data(),   0, nullptr};
std::array<const wl_interface*, 2> newKeyboard{&wl_seat_interface, &keyboardInterface};
const std::array<wl_message, 1> keyboardManagerRequests{
    {{"create_virtual_keyboard", "on", newKeyboard.data()}}};
const wl_interface keyboardManagerInterface{"zwp_virtual_keyboard_manager_v1", 1, 1,
                                            keyboardManagerRequests.data(),    0, nullptr};

// 0 motion, 1 absolute motion, 2 button, 3 axis, 4 frame.
const std::array<wl_message, 5> pointerRequests{{{"motion", "uff", nullptr},
                                                 {"motion_absolute", "uuuuu", nullptr},
                                                 {"button", "uuu", nullptr},
                                                 {"axis", "uuf", nullptr},
                                                 {"frame", "", nullptr}}};
const wl_interface pointerInterface{"zwlr_virtual_pointer_v1", 1, 5,
                                    pointerRequests.data(),    0, nullptr};
std::array<const wl_interface*, 2> newPointer{&wl_seat_interface, &pointerInterface};
const std::array<wl_message, 1> pointerManagerRequests{
    {{"create_virtual_pointer", "?on", newPointer.data()}}};
const wl_interface pointerManagerInterface{"zwlr_virtual_pointer_manager_v1", 1, 1,
                                           pointerManagerRequests.data(),     0, nullptr};

std::uint32_t milliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint32_t>(
        std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

wl_proxy* created(wl_proxy* manager, wl_proxy* seat, const wl_interface& interface) {
    return wl_proxy_marshal_flags(manager, 0, &interface, wl_proxy_get_version(manager), 0, seat,
                                  nullptr);
}

} // namespace

unsigned VirtualSeat::codeOf(QChar letter) {
    if (letter == u'a') return keyA;
    if (letter == u's') return keyS;
    throw std::runtime_error("no such letter on the keyboard");
}

void VirtualSeat::chord(std::initializer_list<unsigned> keys, std::chrono::milliseconds hold) {
    const std::vector<unsigned> all(keys);
    for (const unsigned code : all)
        key(code, true);
    QThread::msleep(static_cast<unsigned long>(hold.count()));
    for (auto code = all.rbegin(); code != all.rend(); ++code)
        key(*code, false);
}

void VirtualSeat::click(QPoint at) {
    moveTo(at);
    button(true);
    button(false);
}

class WlrootsSeat::Objects {
  public:
    explicit Objects(const QString& socket) : client(socket) {
        wl_proxy* seat = client.bind(wl_seat_interface, 1);
        wl_proxy* keyboards = client.bind(keyboardManagerInterface, 1);
        wl_proxy* pointers = client.bind(pointerManagerInterface, 1);
        if (seat == nullptr || keyboards == nullptr || pointers == nullptr)
            throw std::runtime_error("the compositor lets nobody play its keyboard and pointer");
        keyboard = client.keep(created(keyboards, seat, keyboardInterface));
        pointer = client.keep(created(pointers, seat, pointerInterface));
        const int file = ::memfd_create("keymap", MFD_CLOEXEC);
        const auto length = static_cast<std::uint32_t>(keymap.size() + 1);
        if (file < 0 || ::write(file, keymap.data(), length) != static_cast<ssize_t>(length))
            throw std::runtime_error("no file for a keymap");
        WaylandClient::send(keyboard, 0, textKeymap, file, length);
        client.settle();
        ::close(file);
    }

    WaylandClient client;
    wl_proxy* keyboard = nullptr;
    wl_proxy* pointer = nullptr;
};

WlrootsSeat::WlrootsSeat(const QString& socket, QSize screen)
    : m_objects(std::make_unique<Objects>(socket)), m_screen(screen) {}

WlrootsSeat::~WlrootsSeat() = default;

void WlrootsSeat::key(unsigned code, bool isDown) {
    const std::uint32_t time = milliseconds();
    WaylandClient::send(m_objects->keyboard, 1, time, code, isDown ? 1U : 0U);
    if (const unsigned modifier = modifierOf(code))
        m_modifiers = isDown ? m_modifiers | modifier : m_modifiers & ~modifier;
    WaylandClient::send(m_objects->keyboard, 2, m_modifiers, 0U, 0U, 0U);
    m_objects->client.settle();
}

void WlrootsSeat::moveTo(QPoint at) {
    WaylandClient::send(m_objects->pointer, 1, milliseconds(), static_cast<std::uint32_t>(at.x()),
                        static_cast<std::uint32_t>(at.y()),
                        static_cast<std::uint32_t>(m_screen.width()),
                        static_cast<std::uint32_t>(m_screen.height()));
    WaylandClient::send(m_objects->pointer, 4);
    m_objects->client.settle();
}

void WlrootsSeat::button(bool isDown) {
    const std::uint32_t code = BTN_LEFT;
    WaylandClient::send(m_objects->pointer, 2, milliseconds(), code, isDown ? 1U : 0U);
    WaylandClient::send(m_objects->pointer, 4);
    m_objects->client.settle();
}

} // namespace vorq::desktop
