// Pictures of windows on an X server, with a compositor and without.

#include "doubles/desktop/DesktopSession.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/pixels/X11ScreenCapture.h"
#include "platform/linux/x11/pixels/X11WindowPixels.h"

#include <gmock/gmock.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <optional>

namespace vorq::desktop {
namespace {

constexpr std::uint32_t blue = 0x3584e4;
constexpr std::uint32_t red = 0xcc2211;

// 0xrrggbb.
std::uint32_t pixelAt(const WindowPicture& picture, QPoint at) {
    const auto offset = at.y() * picture.bytesPerRow + at.x() * picture.bytesPerPixel;
    const std::uint8_t* pixel = picture.bytes.data() + offset;
    return std::uint32_t{pixel[2]} << 16U | std::uint32_t{pixel[1]} << 8U | pixel[0];
}

// A window that the server fills with a colour whenever it comes into view.
class PlainWindows {
  public:
    std::uint32_t show(const QRect& place, std::uint32_t color, std::uint8_t depth = 24) {
        xcb_connection_t* connection = m_x11.get();
        const std::uint32_t visual = visualOf(depth);
        const std::uint32_t colors = xcb_generate_id(connection);
        xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colors, m_x11.root(), visual);
        const std::uint32_t window = xcb_generate_id(connection);
        const std::uint32_t mask =
            XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_COLORMAP;
        const std::array<std::uint32_t, 4> values{color | 0xff000000U, 0, 1, colors};
        xcb_create_window(
            connection, depth, window, m_x11.root(), static_cast<std::int16_t>(place.x()),
            static_cast<std::int16_t>(place.y()), static_cast<std::uint16_t>(place.width()),
            static_cast<std::uint16_t>(place.height()), 3, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual,
            mask, values.data());
        const X11Reply<xcb_generic_error_t> error(
            xcb_request_check(connection, xcb_map_window_checked(connection, window)));
        EXPECT_FALSE(error);
        return window;
    }
    void set(std::uint32_t window, const char* property, xcb_atom_t type, std::uint32_t value) {
        const auto change = xcb_change_property_checked(m_x11.get(), XCB_PROP_MODE_REPLACE, window,
                                                        m_x11.atom(property), type, 32, 1, &value);
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(m_x11.get(), change));
        EXPECT_FALSE(error);
    }
    void unmap(std::uint32_t window) {
        const X11Reply<xcb_generic_error_t> error(
            xcb_request_check(m_x11.get(), xcb_unmap_window_checked(m_x11.get(), window)));
    }
    void remove(std::uint32_t window) {
        const X11Reply<xcb_generic_error_t> error(
            xcb_request_check(m_x11.get(), xcb_destroy_window_checked(m_x11.get(), window)));
    }

  private:
    [[nodiscard]] std::uint32_t visualOf(std::uint8_t depth) const {
        const auto screen = xcb_setup_roots_iterator(xcb_get_setup(m_x11.get()));
        auto each = xcb_screen_allowed_depths_iterator(screen.data);
        for (; each.rem > 0; xcb_depth_next(&each)) {
            const auto visual = xcb_depth_visuals_iterator(each.data);
            if (each.data->depth == depth && visual.rem > 0) return visual.data->visual_id;
        }
        ADD_FAILURE() << "the X server has no visual of depth " << int{depth};
        return screen.data->root_visual;
    }

    X11Connection m_x11;
};

class WindowPictureTest : public testing::Test {
  protected:
    [[nodiscard]] std::expected<WindowPicture, QString> read(std::uint32_t window) const {
        return X11WindowPixels(reader).read(window, {});
    }
    void expectWhole(std::uint32_t window, QSize size) const {
        const auto picture = read(window);
        ASSERT_TRUE(picture) << picture.error().toStdString();
        ASSERT_EQ(QSize(int(picture->width), int(picture->height)), size);
        for (const QPoint at :
             {QPoint(0, 0), QPoint(size.width() - 1, 0), QPoint(0, size.height() - 1),
              QPoint(size.width() / 2, size.height() / 2),
              QPoint(size.width() - 1, size.height() - 1)})
            EXPECT_EQ(pixelAt(*picture, at), blue) << at.x() << ", " << at.y();
    }

    // What the user sees there.
    [[nodiscard]] std::uint32_t onScreen(QPoint at) const {
        const auto asked = xcb_get_image(reader.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, reader.root(),
                                         static_cast<std::int16_t>(at.x()),
                                         static_cast<std::int16_t>(at.y()), 1, 1, ~0U);
        const X11Reply<xcb_get_image_reply_t> reply(
            xcb_get_image_reply(reader.get(), asked, nullptr));
        if (!reply) return 0;
        const std::uint8_t* pixel = xcb_get_image_data(reply.get());
        return std::uint32_t{pixel[2]} << 16U | std::uint32_t{pixel[1]} << 8U | pixel[0];
    }

    void startCompositor() {
        session.start("picom", "picom", {"--backend", "xrender"});
        DesktopSession::waitUntil("the compositor", [this] {
            const X11Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
                reader.get(), xcb_get_selection_owner(reader.get(), reader.atom("_NET_WM_CM_S0")),
                nullptr));
            return owner && owner->owner != XCB_WINDOW_NONE;
        });
    }

    DesktopSession session;
    X11Connection reader;
    PlainWindows windows;
};

TEST_F(WindowPictureTest, HasThePixelsOfAWindowBlueFirst) {
    expectWhole(windows.show({100, 100, 301, 201}, blue), {301, 201});
}

TEST_F(WindowPictureTest, HasThoseOfATranslucentWindow) {
    expectWhole(windows.show({100, 100, 301, 201}, blue, 32), {301, 201});
}

TEST_F(WindowPictureTest, LeavesOutWhatCoversTheWindow) {
    const auto window = windows.show({100, 100, 301, 201}, blue);
    windows.show({80, 80, 200, 100}, red);
    expectWhole(window, {301, 201});
}

TEST_F(WindowPictureTest, LeavesOutWhatCoversTheWindowUnderACompositor) {
    startCompositor();
    const auto window = windows.show({100, 100, 301, 201}, blue);
    windows.show({80, 80, 200, 100}, red);
    // It takes windows over some time after it has said that it is there.
    DesktopSession::waitUntil("the covered corner", [&] {
        const auto picture = read(window);
        return picture && pixelAt(*picture, {0, 0}) == blue;
    });
    expectWhole(window, {301, 201});
    expectWhole(windows.show({-50, 800, 301, 201}, blue, 32), {301, 201});
}

TEST_F(WindowPictureTest, HasWhatIsOffTheScreen) {
    expectWhole(windows.show({-50, 800, 301, 201}, blue), {301, 201});
}

TEST_F(WindowPictureTest, IsNoneOfAWindowThatIsGoneOrHidden) {
    const auto window = windows.show({100, 100, 301, 201}, blue);
    ASSERT_TRUE(read(window));
    windows.unmap(window);
    EXPECT_FALSE(read(window));
    windows.remove(window);
    EXPECT_FALSE(read(window));
    EXPECT_FALSE(read(0x7fffffff));
    // The connection goes on.
    expectWhole(windows.show({100, 100, 301, 201}, blue), {301, 201});
}

// Some window managers keep such windows mapped for pictures of their own.
TEST_F(WindowPictureTest, IsNotOfferedOfAMinimisedWindowNorOfOneOfAnotherWorkspace) {
    session.start("xterm", "xterm");
    const auto window = session.waitForWindow("xterm");
    X11ScreenCapture capture;
    const auto isOffered = [&] {
        return std::ranges::any_of(capture.windowsOnScreen({}).value(),
                                   [&](const auto& each) { return each.window == window; });
    };
    DesktopSession::waitUntil("the window to be offered", isOffered);

    windows.set(window, "_NET_WM_STATE", XCB_ATOM_ATOM, reader.atom("_NET_WM_STATE_HIDDEN"));
    EXPECT_FALSE(isOffered());
    windows.set(window, "_NET_WM_STATE", XCB_ATOM_ATOM, reader.atom("_NET_WM_STATE_ABOVE"));
    EXPECT_TRUE(isOffered());

    windows.set(window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, 1);
    EXPECT_FALSE(isOffered());
    windows.set(window, "_NET_WM_DESKTOP", XCB_ATOM_CARDINAL, 0xffffffff);
    EXPECT_TRUE(isOffered());
}

TEST_F(WindowPictureTest, LeavesTheScreenAsItWas) {
    const auto window = windows.show({100, 100, 300, 200}, blue);
    windows.show({80, 80, 200, 100}, red);
    expectWhole(window, {300, 200});

    EXPECT_EQ(onScreen({120, 120}), red);
    EXPECT_EQ(onScreen({380, 280}), blue);
}

} // namespace
} // namespace vorq::desktop
