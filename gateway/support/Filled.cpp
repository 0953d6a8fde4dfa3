#include "support/Filled.h"

namespace vorq::gateway {

std::string filledWith(std::string_view pattern, const std::vector<std::string>& values) {
    std::string out;
    for (const std::string& value : values) {
        const std::size_t gap = pattern.find("{}");
        if (gap == std::string_view::npos) break;
        out.append(pattern.substr(0, gap)).append(value);
        pattern.remove_prefix(gap + 2);
    }
    return out.append(pattern);
}

} // namespace vorq::gateway
