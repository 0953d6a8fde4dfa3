#include "Completions.h"
#include "Offers.h"

namespace vorq::packaging {
namespace {

std::string valueCase(const Option& option) {
    std::string action = "return ;;\n";
    if (option.namesFile) {
        action = "compopt -o filenames 2>/dev/null\n"
                 "        mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n"
                 "        return ;;\n";
    } else if (!option.choices.empty()) {
        action = "mapfile -t COMPREPLY < <(compgen -W " + quoted(joined(option.choices)) +
                 " -- \"$current\")\n        return ;;\n";
    }
    return "    " + option.name + ")\n        " + action;
}

std::string placeCase(const Place& place) {
    std::vector<std::string> words;
    for (const Offer& offer : place.offers)
        words.push_back(offer.word);
    const std::string pattern = quoted(place.words);
    return "    " + pattern + (place.isExact ? "" : " | " + quoted(place.words + ' ') + "*") +
           ")\n        offers=" + quoted(joined(words)) + " ;;\n";
}

} // namespace

std::string bashCompletion(const Program& program) {
    std::string text = "# bash completion of " + program.name + "\n\n_" + program.name +
                       "()\n"
                       "{\n"
                       "    local current=${COMP_WORDS[COMP_CWORD]}\n"
                       "    local previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
                       "    local i word command='' offers=''\n"
                       "    COMPREPLY=()\n"
                       "    # bash divides --option=value at the sign.\n"
                       "    if [[ $current == = ]]; then\n"
                       "        current=''\n"
                       "    elif [[ $previous == = ]] && ((COMP_CWORD > 1)); then\n"
                       "        previous=${COMP_WORDS[COMP_CWORD - 2]}\n"
                       "    fi\n";
    const std::vector<Option> valued = valuedOptions(program);
    text += "    case $previous in\n";
    for (const Option& option : valued)
        text += valueCase(option);
    text += "    esac\n"
            "    for ((i = 1; i < COMP_CWORD; ++i)); do\n"
            "        word=${COMP_WORDS[i]}\n"
            "        [[ $word == -* ]] || command+=${command:+ }$word\n"
            "    done\n"
            "    case $command in\n";
    for (const Place& place : placesOf(program))
        text += placeCase(place);
    return text +
           "    esac\n"
           "    mapfile -t COMPREPLY < <(compgen -W \"$offers\" -- \"$current\")\n"
           "}\n"
           "complete -F _" +
           program.name + ' ' + program.name + '\n';
}

} // namespace vorq::packaging
