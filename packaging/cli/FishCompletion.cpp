#include "Completions.h"
#include "Offers.h"

#include <algorithm>

namespace vorq::packaging {
namespace {

// Whether the words of the line that are no options are these, or begin with these.
std::string conditionFunctions(const std::string& name) {
    return "function " + name +
           "_words\n"
           "    set -l words (commandline -opc)\n"
           "    set -e words[1]\n"
           "    string match -v -- '-*' $words\n"
           "end\n"
           "function " +
           name +
           "_is\n"
           "    test \"$(" +
           name +
           "_words | string join ' ')\" = \"$argv\"\n"
           "end\n"
           "function " +
           name +
           "_in\n"
           "    string match -q -- \"$argv *\" \"$(" +
           name +
           "_words | string join ' ') \"\n"
           "end\n";
}

std::string valueOf(const Option& option) {
    if (option.namesFile) return " -r -F";
    if (!option.choices.empty()) return " -x -a " + quoted(joined(option.choices));
    return option.value.empty() ? "" : " -x";
}

std::string lineOf(const Program& program, const Place& place, const Offer& offer,
                   const std::vector<Option>& valued) {
    std::string line = "complete -c " + program.name + " -n '__" + program.name +
                       (place.isExact ? "_is " : "_in ") + place.words + '\'';
    if (offer.word.starts_with("--")) {
        line += " -l " + offer.word.substr(2);
        const auto option = std::ranges::find(valued, offer.word, &Option::name);
        if (option != valued.end()) line += valueOf(*option);
    } else {
        line += " -a " + quoted(offer.word);
    }
    if (!offer.brief.empty()) line += " -d " + quoted(offer.brief);
    return line + '\n';
}

} // namespace

std::string fishCompletion(const Program& program) {
    const std::vector<Option> valued = valuedOptions(program);
    std::string text = "# fish completion of " + program.name + "\n\n" +
                       conditionFunctions("__" + program.name) + "\ncomplete -c " + program.name +
                       " -f\n";
    for (const Place& place : placesOf(program))
        for (const Offer& offer : place.offers)
            text += lineOf(program, place, offer, valued);
    return text;
}

} // namespace vorq::packaging
