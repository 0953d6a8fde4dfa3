// The picture of a large window and the search for a selection on it, beside a bare request for the
// same picture. window_picture.py brings up the screen that it needs.

#include "capture/placement/TintSearch.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/pixels/X11WindowPixels.h"

#include <benchmark/benchmark.h>
#include <xcb/xcb.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>

using namespace vorq;

namespace {

constexpr std::uint16_t width = 3840;
constexpr std::uint16_t height = 2160;

/// A window over the whole screen: a page of dark text with one selected line at its end.
class Page {
  public:
    Page() {
        xcb_connection_t* connection = m_x11.get();
        const std::uint32_t mask = XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT;
        const std::array<std::uint32_t, 2> values{0xffffff, 1};
        m_window = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_window, m_x11.root(), 0, 0, width,
                          height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, mask,
                          values.data());
        xcb_map_window(connection, m_window);
        std::minstd_rand random(11);
        const auto upTo = [&](int limit) {
            return std::uniform_int_distribution(0, limit)(random);
        };
        for (int y = 40; y + 60 < height; y += 40) {
            for (int x = 40; x + 30 < width; x += 8 + upTo(19))
                paint(x, y, 4 + upTo(7), 20, 0x202020);
        }
        paint(200, height - 40, 400, 20, 0xb3d6fa);
        const X11Reply<xcb_get_input_focus_reply_t> drawn(
            xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
    }

    [[nodiscard]] std::uint32_t window() const { return m_window; }

  private:
    void paint(int left, int top, int across, int down, std::uint32_t color) const {
        xcb_connection_t* connection = m_x11.get();
        const std::uint32_t context = xcb_generate_id(connection);
        xcb_create_gc(connection, context, m_window, XCB_GC_FOREGROUND, &color);
        const xcb_rectangle_t area{static_cast<std::int16_t>(left), static_cast<std::int16_t>(top),
                                   static_cast<std::uint16_t>(across),
                                   static_cast<std::uint16_t>(down)};
        xcb_poly_fill_rectangle(connection, m_window, context, 1, &area);
        xcb_free_gc(connection, context);
    }

    X11Connection m_x11;
    std::uint32_t m_window = 0;
};

std::optional<TintBox> search(const WindowPicture& picture) {
    const PixelBuffer pixels{.bytes = picture.bytes,
                             .width = picture.width,
                             .height = picture.height,
                             .bytesPerRow = picture.bytesPerRow,
                             .bytesPerPixel = picture.bytesPerPixel};
    const QSizeF size(width, height);
    return selectionPixelBounds(
        pixels, {.windowSize = size, .search = QRectF(QPointF(), size), .seed = {220, height - 30}},
        selectionTargetColors({}));
}

// In time that passes, since the X server does the most of it.
void addMeasure(const char* name, const std::function<void()>& work) {
    benchmark::RegisterBenchmark(name,
                                 [work](benchmark::State& state) {
                                     for (auto _ : state)
                                         work();
                                 })
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv) {
    const X11Connection reader;
    if (!reader.isUsable()) {
        std::fputs("No X server answers.\n", stderr);
        return EXIT_FAILURE;
    }
    const Page page;
    const X11WindowPixels pixels(reader);
    const auto first = pixels.read(page.window(), {});
    if (!first || !search(*first)) {
        std::fputs("The selection is not seen.\n", stderr);
        return EXIT_FAILURE;
    }
    addMeasure("picture", [&] { benchmark::DoNotOptimize(pixels.read(page.window(), {})); });
    addMeasure("picture+search",
               [&] { benchmark::DoNotOptimize(search(*pixels.read(page.window(), {}))); });
    addMeasure("get-image", [&] {
        const X11Reply<xcb_get_image_reply_t> reply(
            xcb_get_image_reply(reader.get(),
                                xcb_get_image(reader.get(), XCB_IMAGE_FORMAT_Z_PIXMAP,
                                              page.window(), 0, 0, width, height, ~0U),
                                nullptr));
        benchmark::DoNotOptimize(reply.get());
    });
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return EXIT_SUCCESS;
}
