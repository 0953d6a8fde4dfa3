#include "Completions.h"
#include "Offers.h"

namespace vorq::packaging {
namespace {

std::string valueAction(const Option& option) {
    if (option.namesFile) return "_files";
    if (!option.choices.empty()) return "compadd -- " + joined(option.choices);
    return "_message " + quoted(option.value);
}

// A word and what it is for, as _describe wants them.
std::string described(const Offer& offer) {
    std::string word;
    for (const char c : offer.word)
        word += c == ':' ? std::string("\\:") : std::string(1, c);
    return quoted(offer.brief.empty() ? word : word + ':' + offer.brief);
}

std::string placeCase(const Place& place) {
    std::string text = "(" + quoted(place.words);
    if (!place.isExact) text += "|" + quoted(place.words + ' ') + "*";
    text += ")\n        offers=(";
    for (const Offer& offer : place.offers)
        text += "\n            " + described(offer);
    return "    " + text + ") ;;\n";
}

} // namespace

std::string zshCompletion(const Program& program) {
    std::string text = "#compdef " + program.name +
                       "\n\n"
                       "local previous=${words[CURRENT-1]}\n"
                       "local command=\"${(j: :)${(@)words[2,CURRENT-1]}:#-*}\"\n"
                       "local -a offers\n"
                       "if [[ $PREFIX == --*=* ]]; then\n"
                       "    previous=${PREFIX%%=*}\n"
                       "    compset -P '*='\n"
                       "fi\n"
                       "case $previous in\n";
    for (const Option& option : valuedOptions(program))
        text += "    (" + option.name + ") " + valueAction(option) + "; return ;;\n";
    text += "esac\n"
            "case $command in\n";
    for (const Place& place : placesOf(program))
        text += placeCase(place);
    return text + "esac\n_describe command offers\n";
}

} // namespace vorq::packaging
