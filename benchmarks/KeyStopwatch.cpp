#include "KeyStopwatch.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ranges>
#include <utility>

KeyStopwatch::KeyStopwatch(std::vector<std::uint8_t> keys, std::uint32_t window)
    : m_keys(std::move(keys)) {
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.get(), window, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(m_connection.get());
}

double KeyStopwatch::millisecondsToMapped() {
    for (const std::uint8_t key : m_keys | std::views::take(m_keys.size() - 1))
        fakeKey(XCB_KEY_PRESS, key);
    const auto start = std::chrono::steady_clock::now();
    fakeKey(XCB_KEY_PRESS, m_keys.back());
    waitFor(XCB_MAP_NOTIFY);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    for (const std::uint8_t key : m_keys | std::views::reverse)
        fakeKey(XCB_KEY_RELEASE, key);
    return taken.count();
}

void KeyStopwatch::waitForUnmapped() {
    waitFor(XCB_UNMAP_NOTIFY);
}

void KeyStopwatch::fakeKey(std::uint8_t type, std::uint8_t key) {
    xcb_test_fake_input(m_connection.get(), type, key, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(m_connection.get());
}

void KeyStopwatch::waitFor(std::uint8_t type) {
    while (xcb_generic_event_t* event = xcb_wait_for_event(m_connection.get())) {
        const bool isIt = (event->response_type & 0x7f) == type;
        std::free(event);
        if (isIt) return;
    }
}

double percentile(const std::vector<double>& sorted, std::size_t percent) {
    return sorted[std::min(sorted.size() - 1, sorted.size() * percent / 100)];
}

void reportTimes(const char* name, const std::vector<double>& sorted) {
    std::printf("%-8s p50 %6.2f ms   p95 %6.2f ms   longest %6.2f ms\n", name,
                percentile(sorted, 50), percentile(sorted, 95), sorted.back());
}
