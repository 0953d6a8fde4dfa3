#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <cstdint>
#include <vector>

/// Presses a key, with others held, and waits for a window to come or go, on a connection to the X
/// server of its own. Any thread.
class KeyStopwatch {
  public:
    /// The last of the keys, by their codes, is the one whose press is measured from.
    KeyStopwatch(std::vector<std::uint8_t> keys, std::uint32_t window);

    double millisecondsToMapped();
    void waitForUnmapped();

  private:
    void fakeKey(std::uint8_t type, std::uint8_t key);
    void waitFor(std::uint8_t type);

    vorq::X11Connection m_connection;
    std::vector<std::uint8_t> m_keys;
};

/// Of times in ascending order.
double percentile(const std::vector<double>& sorted, std::size_t percent);

/// Prints the name and the median, the 95th percentile and the longest of times in ascending order.
void reportTimes(const char* name, const std::vector<double>& sorted);
