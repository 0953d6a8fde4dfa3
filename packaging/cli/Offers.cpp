#include "Offers.h"

#include <algorithm>

namespace vorq::packaging {
namespace {

void addOptions(Place& place, const std::vector<Option>& options) {
    for (const Option& option : options)
        place.offers.push_back({option.name, flowing(option.help)});
}

// The commands that may stand behind these words.
Place commandPlace(const Program& program, const std::string& words) {
    Place place{words, true, {}};
    for (const Section& section : program.sections) {
        if (section.words != words) continue;
        for (std::size_t i = 0; i < section.commands.size(); ++i)
            for (const std::string& name : section.commands[i].names)
                place.offers.push_back({name, briefOf(section, i)});
        addOptions(place, section.options);
    }
    return place;
}

bool hasCommandsBehind(const Program& program, const std::string& words) {
    return std::ranges::any_of(program.sections,
                               [&](const Section& each) { return each.words == words; });
}

} // namespace

std::vector<Place> placesOf(const Program& program) {
    std::vector<Place> places{commandPlace(program, "")};
    for (const Section& section : program.sections) {
        if (!section.words.empty()) {
            places.push_back(commandPlace(program, section.words));
            places.back().offers.push_back({"--help", ""});
        }
        for (const Command& command : section.commands) {
            for (const std::string& name : command.names) {
                const std::string words = section.words.empty() ? name : section.words + ' ' + name;
                if (name.starts_with('-') || hasCommandsBehind(program, words)) continue;
                Place place{words, false, {}};
                for (const std::string& choice : command.choices)
                    place.offers.push_back({choice, ""});
                addOptions(place, command.options);
                addOptions(place, section.options);
                place.offers.push_back({"--help", ""});
                places.push_back(std::move(place));
            }
        }
    }
    return places;
}

std::vector<Option> valuedOptions(const Program& program) {
    std::vector<Option> all;
    const auto add = [&all](const std::vector<Option>& options) {
        for (const Option& option : options)
            if (!option.value.empty() &&
                std::ranges::find(all, option.name, &Option::name) == all.end())
                all.push_back(option);
    };
    for (const Section& section : program.sections) {
        add(section.options);
        for (const Command& command : section.commands)
            add(command.options);
    }
    return all;
}

std::string quoted(const std::string& text) {
    std::string out = "'";
    for (const char c : text)
        out += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return out + '\'';
}

std::string joined(const std::vector<std::string>& words) {
    std::string out;
    for (const std::string& word : words)
        out += out.empty() ? word : ' ' + word;
    return out;
}

} // namespace vorq::packaging
