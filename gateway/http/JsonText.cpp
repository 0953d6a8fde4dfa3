#include "http/JsonText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

/// Readers that go line by line disagree on whether these three end a line.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kLineEnds = {{
    {"\xE2\x80\xA8", "\\u2028"},
    {"\xE2\x80\xA9", "\\u2029"},
    {"\xC2\x85", "\\u0085"},
}};

std::string withEscapedLineEnds(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find_first_of("\xE2\xC2"), text.size());
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        const auto end = std::ranges::find_if(
            kLineEnds, [&](const auto& entry) { return text.starts_with(entry.first); });
        if (end != kLineEnds.end()) {
            out += end->second;
            text.remove_prefix(end->first.size());
        } else if (!text.empty()) {
            out += text.front();
            text.remove_prefix(1);
        }
    }
    return out;
}

} // namespace

std::string oneLineJson(const json& value) {
    return withEscapedLineEnds(value.dump(-1, ' ', false, json::error_handler_t::replace));
}

json errorDocument(const std::string& sentence, const std::string& field) {
    json document = {{"error", sentence}};
    if (!field.empty()) document["field"] = field;
    return document;
}

} // namespace vorq::gateway
