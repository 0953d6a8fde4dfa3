#include "CommandPages.h"

#include <algorithm>

namespace vorq::packaging {

std::string flowing(std::string text) {
    std::ranges::replace(text, '\n', ' ');
    return text;
}

std::string briefOf(const Section& section, std::size_t index) {
    while (section.commands[index].help.empty() && index + 1 < section.commands.size())
        ++index;
    const std::string help = flowing(section.commands[index].help);
    std::size_t end = help.size();
    for (const char* mark : {". ", ": ", "; ", ", as "})
        end = std::min(end, help.find(mark));
    return help.substr(0, help.ends_with('.') ? std::min(end, help.size() - 1) : end);
}

} // namespace vorq::packaging
