#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// Numbers the distinct keys of a text, from 0. Made for millions of short keys.
class KeyTable {
  public:
    static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

    /// The number of `key`, a new one if it was not there.
    std::uint32_t add(std::string_view key);
    /// kNone if it is not there.
    [[nodiscard]] std::uint32_t find(std::string_view key) const;
    /// Valid until the next `add`.
    [[nodiscard]] std::string_view key(std::uint32_t number) const;
    [[nodiscard]] std::size_t size() const { return m_ends.size(); }

  private:
    [[nodiscard]] std::size_t slotOf(std::string_view key) const;
    void grow();

    std::string m_letters;
    std::vector<std::uint32_t> m_ends;
    std::vector<std::uint32_t> m_slots;
};

} // namespace vorq::gateway
