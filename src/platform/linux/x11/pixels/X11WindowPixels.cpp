#include "platform/linux/x11/pixels/X11WindowPixels.h"

#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/pixels/SharedMemory.h"
#include "support/async/BlockFor.h"

#include <xcb/composite.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

#include <chrono>
#include <vector>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// More than a window over a screen of 7680 by 4320 pixels.
constexpr std::int64_t largestPicture = std::int64_t{160} * 1024 * 1024;

// A program draws what was covered once it hears that it can be seen; most do with their next
// frame.
constexpr std::chrono::milliseconds timeToDraw{60};

constexpr std::uint32_t allPlanes = ~0U;

const xcb_visualtype_t* visualOf(const xcb_setup_t* setup, xcb_visualid_t id) {
    for (auto screen = xcb_setup_roots_iterator(setup); screen.rem > 0; xcb_screen_next(&screen)) {
        auto depth = xcb_screen_allowed_depths_iterator(screen.data);
        for (; depth.rem > 0; xcb_depth_next(&depth)) {
            auto visual = xcb_depth_visuals_iterator(depth.data);
            for (; visual.rem > 0; xcb_visualtype_next(&visual))
                if (visual.data->visual_id == id) return visual.data;
        }
    }
    return nullptr;
}

// Whether the first three bytes of a pixel are blue, green, red.
bool isBlueFirst(const xcb_setup_t* setup, xcb_visualid_t id) {
    const xcb_visualtype_t* visual = visualOf(setup, id);
    return visual != nullptr && setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST &&
           visual->blue_mask == 0xff && visual->green_mask == 0xff00 &&
           visual->red_mask == 0xff0000;
}

QRect contentsOf(const xcb_get_geometry_reply_t& geometry,
                 const xcb_translate_coordinates_reply_t& place) {
    return {place.dst_x, place.dst_y, geometry.width, geometry.height};
}

} // namespace

std::expected<WindowPicture, QString> X11WindowPixels::read(X11Connection::Window window,
                                                            const std::stop_token& stop) const {
    xcb_connection_t* connection = m_x11.get();
    const auto askedSize = xcb_get_geometry(connection, window);
    const auto askedPlace = xcb_translate_coordinates(connection, window, m_x11.root(), 0, 0);
    const X11Reply<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(connection, askedSize, nullptr));
    const X11Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(connection, askedPlace, nullptr));
    if (!size || !place) return std::unexpected(u"The window is gone."_s);
    const std::optional<Layout> layout = layoutOf(window, *size);
    if (!layout) return std::unexpected(u"The window has pixels of an unknown form."_s);
    if (layout->bytesPerRow * size->height > largestPicture)
        return std::unexpected(u"The window is too large."_s);

    const QRect contents = contentsOf(*size, *place);
    const bool isWhole = isOnScreen(contents) && (hasCompositor() || !isCovered(window, contents));
    const int border = size->border_width;
    const auto picture =
        isWhole ? image(window, QRect({0, 0}, contents.size()), *layout)
                : redirectedImage(window, QRect({border, border}, contents.size()), *layout, stop);
    if (!picture) return std::unexpected(u"The X server gives no picture of it."_s);
    return *picture;
}

std::optional<X11WindowPixels::Layout>
X11WindowPixels::layoutOf(X11Connection::Window window,
                          const xcb_get_geometry_reply_t& geometry) const {
    if (geometry.depth != 24 && geometry.depth != 32) return std::nullopt;
    const X11Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        m_x11.get(), xcb_get_window_attributes(m_x11.get(), window), nullptr));
    const xcb_setup_t* setup = xcb_get_setup(m_x11.get());
    if (!attributes || !isBlueFirst(setup, attributes->visual)) return std::nullopt;
    auto format = xcb_setup_pixmap_formats_iterator(setup);
    for (; format.rem > 0; xcb_format_next(&format)) {
        const int bits = format.data->bits_per_pixel;
        if (format.data->depth != geometry.depth || (bits != 24 && bits != 32)) continue;
        const std::int64_t pad = format.data->scanline_pad;
        const std::int64_t rowBits = (std::int64_t{geometry.width} * bits + pad - 1) / pad * pad;
        return Layout{.bytesPerPixel = bits / 8, .bytesPerRow = rowBits / 8};
    }
    return std::nullopt;
}

bool X11WindowPixels::hasCompositor() const {
    const auto selection = m_x11.atom("_NET_WM_CM_S" + QByteArray::number(m_x11.screen()));
    const X11Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        m_x11.get(), xcb_get_selection_owner(m_x11.get(), selection), nullptr));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

bool X11WindowPixels::isOnScreen(const QRect& pixels) const {
    const X11Reply<xcb_get_geometry_reply_t> root(
        xcb_get_geometry_reply(m_x11.get(), xcb_get_geometry(m_x11.get(), m_x11.root()), nullptr));
    return root && QRect(0, 0, root->width, root->height).contains(pixels);
}

X11Connection::Window X11WindowPixels::topLevelOf(X11Connection::Window window) const {
    for (;;) {
        const X11Reply<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_x11.get(), xcb_query_tree(m_x11.get(), window), nullptr));
        if (!tree || tree->parent == m_x11.root() || tree->parent == XCB_WINDOW_NONE) return window;
        window = tree->parent;
    }
}

bool X11WindowPixels::isCovered(X11Connection::Window window, const QRect& pixels) const {
    xcb_connection_t* connection = m_x11.get();
    const X11Connection::Window topLevel = topLevelOf(window);
    const X11Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, m_x11.root()), nullptr));
    if (!tree) return true;
    struct Asked {
        xcb_get_window_attributes_cookie_t state;
        xcb_get_geometry_cookie_t place;
    };
    std::vector<Asked> above;
    // The lowest comes first.
    const xcb_window_t* children = xcb_query_tree_children(tree.get());
    for (int i = xcb_query_tree_children_length(tree.get()) - 1; i >= 0 && children[i] != topLevel;
         --i)
        above.push_back({.state = xcb_get_window_attributes(connection, children[i]),
                         .place = xcb_get_geometry(connection, children[i])});
    bool isCovered = false;
    for (const Asked& asked : above) {
        const X11Reply<xcb_get_window_attributes_reply_t> state(
            xcb_get_window_attributes_reply(connection, asked.state, nullptr));
        const X11Reply<xcb_get_geometry_reply_t> place(
            xcb_get_geometry_reply(connection, asked.place, nullptr));
        if (!state || !place || state->map_state != XCB_MAP_STATE_VIEWABLE ||
            state->_class != XCB_WINDOW_CLASS_INPUT_OUTPUT)
            continue;
        const int border = 2 * place->border_width;
        const QRect other(place->x, place->y, place->width + border, place->height + border);
        isCovered = isCovered || other.intersects(pixels);
    }
    return isCovered;
}

std::optional<WindowPicture> X11WindowPixels::redirectedImage(X11Connection::Window window,
                                                              const QRect& part, Layout layout,
                                                              const std::stop_token& stop) const {
    xcb_connection_t* connection = m_x11.get();
    // The server knows only what this connection says that it knows.
    const X11Reply<xcb_composite_query_version_reply_t> version(xcb_composite_query_version_reply(
        connection,
        xcb_composite_query_version(connection, XCB_COMPOSITE_MAJOR_VERSION,
                                    XCB_COMPOSITE_MINOR_VERSION),
        nullptr));
    if (!version) return std::nullopt;
    xcb_composite_redirect_window(connection, window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    xcb_flush(connection);
    if (!hasCompositor()) blockFor(timeToDraw, stop);
    const xcb_pixmap_t pixmap = xcb_generate_id(connection);
    xcb_composite_name_window_pixmap(connection, window, pixmap);
    std::optional<WindowPicture> picture;
    if (!stop.stop_requested()) picture = image(pixmap, part, layout);
    xcb_free_pixmap(connection, pixmap);
    xcb_composite_unredirect_window(connection, window, XCB_COMPOSITE_REDIRECT_AUTOMATIC);
    xcb_flush(connection);
    // Errors of what is not asked for an answer wait as events, which nobody else takes away.
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection)}) {
    }
    return picture;
}

std::optional<WindowPicture> X11WindowPixels::image(std::uint32_t drawable, const QRect& part,
                                                    Layout layout) const {
    auto shared = sharedImage(drawable, part, layout);
    return shared ? shared : sentImage(drawable, part, layout);
}

std::optional<WindowPicture> X11WindowPixels::sharedImage(std::uint32_t drawable, const QRect& part,
                                                          Layout layout) const {
    xcb_connection_t* connection = m_x11.get();
    if (!canPassMemory(xcb_get_file_descriptor(connection))) return std::nullopt;
    const X11Reply<xcb_shm_query_version_reply_t> version(
        xcb_shm_query_version_reply(connection, xcb_shm_query_version(connection), nullptr));
    if (!version || (version->major_version == 1 && version->minor_version < 2))
        return std::nullopt;
    const std::int64_t size = layout.bytesPerRow * part.height();
    const auto memory = SharedMemory::make(static_cast<std::size_t>(size));
    const int descriptor = memory ? memory->duplicateDescriptor() : -1;
    if (descriptor < 0) return std::nullopt;

    const xcb_shm_seg_t segment = xcb_generate_id(connection);
    // xcb closes what it has sent.
    const X11Reply<xcb_generic_error_t> refusal(xcb_request_check(
        connection, xcb_shm_attach_fd_checked(connection, segment, descriptor, 0)));
    if (refusal) return std::nullopt;
    const auto asked = xcb_shm_get_image(connection, drawable, static_cast<std::int16_t>(part.x()),
                                         static_cast<std::int16_t>(part.y()),
                                         static_cast<std::uint16_t>(part.width()),
                                         static_cast<std::uint16_t>(part.height()), allPlanes,
                                         XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0);
    const X11Reply<xcb_shm_get_image_reply_t> reply(
        xcb_shm_get_image_reply(connection, asked, nullptr));
    xcb_shm_detach(connection, segment);
    xcb_flush(connection);
    if (!reply || reply->size < static_cast<std::uint64_t>(size)) return std::nullopt;
    return WindowPicture{.bytes = memory->bytes(),
                         .width = part.width(),
                         .height = part.height(),
                         .bytesPerRow = layout.bytesPerRow,
                         .bytesPerPixel = layout.bytesPerPixel,
                         .memory = memory};
}

std::optional<WindowPicture> X11WindowPixels::sentImage(std::uint32_t drawable, const QRect& part,
                                                        Layout layout) const {
    xcb_connection_t* connection = m_x11.get();
    const auto asked = xcb_get_image(
        connection, XCB_IMAGE_FORMAT_Z_PIXMAP, drawable, static_cast<std::int16_t>(part.x()),
        static_cast<std::int16_t>(part.y()), static_cast<std::uint16_t>(part.width()),
        static_cast<std::uint16_t>(part.height()), allPlanes);
    const std::shared_ptr<xcb_get_image_reply_t> reply(
        xcb_get_image_reply(connection, asked, nullptr), FreeX11Memory());
    if (!reply) return std::nullopt;
    const auto size = static_cast<std::size_t>(xcb_get_image_data_length(reply.get()));
    if (size < static_cast<std::size_t>(layout.bytesPerRow * part.height())) return std::nullopt;
    return WindowPicture{.bytes = {xcb_get_image_data(reply.get()), size},
                         .width = part.width(),
                         .height = part.height(),
                         .bytesPerRow = layout.bytesPerRow,
                         .bytesPerPixel = layout.bytesPerPixel,
                         .memory = reply};
}

} // namespace vorq
