#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace vorq::gateway {

struct PhrasePlace {
    std::size_t offset = 0;
    std::size_t length = 0;
};

/// Whether one of the phrases of `list`, which stand between "|", occurs in `text`, both
/// lower-cased. Where words have blanks between them, only whole words count.
[[nodiscard]] bool hasPhrase(std::string_view text, std::string_view list);

/// The first place of any of them, the longest at that place.
[[nodiscard]] std::optional<PhrasePlace> firstPhrase(std::string_view text, std::string_view list);

/// Calls `visit` with each phrase of `list` until it gives true; whether it did.
template<typename Visit>
bool anyPhrase(std::string_view list, const Visit& visit) {
    while (!list.empty()) {
        const std::size_t bar = list.find('|');
        if (visit(list.substr(0, bar))) return true;
        if (bar == std::string_view::npos) return false;
        list.remove_prefix(bar + 1);
    }
    return false;
}

} // namespace vorq::gateway
