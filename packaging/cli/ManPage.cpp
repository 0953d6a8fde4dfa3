#include "ManPage.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <utility>

namespace vorq::packaging {
namespace {

constexpr std::size_t kLongestLine = 70; // some characters are written as several

// Text that roff takes for nothing else. A hyphen is one that can be copied into a shell.
std::string escaped(const std::string& text) {
    std::string out;
    for (const char c : text) {
        if (c == '\\') {
            out += "\\e";
        } else if (c == '-') {
            out += "\\-";
        } else if (c == '"') {
            out += "\\(dq";
        } else {
            out += c;
        }
    }
    return out.starts_with('.') || out.starts_with('\'') ? "\\&" + out : out;
}

// A sentence a line, as roff wants them, and no long lines.
std::string paragraph(const std::string& text) {
    std::istringstream words(flowing(text));
    std::string out;
    std::string line;
    const auto endLine = [&] { out += escaped(std::exchange(line, {})) + '\n'; };
    for (std::string word; words >> word;) {
        if (!line.empty() && line.size() + word.size() > kLongestLine) endLine();
        line += line.empty() ? word : ' ' + word;
        if (word.ends_with('.')) endLine();
    }
    if (!line.empty()) endLine();
    return out;
}

std::string upper(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

std::string optionUsage(const Option& option) {
    const std::string name = "\\fB" + escaped(option.name) + "\\fR";
    return option.value.empty() ? name : name + " \\fI" + escaped(option.value) + "\\fR";
}

std::string title(const Program& program, const Section& section, const Command& command) {
    std::string text = "\\fB" + escaped(program.name);
    if (!section.words.empty()) text += ' ' + section.words;
    text += "\\fR";
    for (std::size_t i = 0; i < command.names.size(); ++i)
        text += (i == 0 ? " \\fB" : " | \\fB") + escaped(command.names[i]) + "\\fR";
    for (const Option& option : command.options)
        text += " [" + optionUsage(option) + (option.isRepeatable ? "]..." : "]");
    if (!command.operands.empty()) text += " \\fI" + escaped(command.operands) + "\\fR";
    return text + '\n';
}

std::string optionList(const std::vector<Option>& options) {
    std::string text;
    for (const Option& option : options)
        if (!option.help.empty())
            text += ".TP\n" + optionUsage(option) + '\n' + paragraph(option.help);
    return text;
}

std::string sectionText(const Program& program, const Section& section) {
    std::string text =
        ".SS " + escaped(section.heading.substr(0, section.heading.rfind(':'))) + '\n';
    bool sharesHelp = false;
    for (const Command& command : section.commands) {
        if (command.names.front().starts_with('-')) continue; // explains itself
        text += (sharesHelp ? ".TQ\n" : ".TP\n") + title(program, section, command);
        sharesHelp = command.help.empty();
        if (!sharesHelp) text += paragraph(command.help);
        const std::string options = optionList(command.options);
        if (!options.empty()) text += ".RS\n" + options + ".RE\n";
    }
    if (!section.remark.empty()) text += ".PP\n" + paragraph(section.remark);
    return text + optionList(section.options);
}

} // namespace

std::string manPage(const Program& program, const std::string& version, const std::string& date) {
    std::string text = ".TH " + upper(program.name) + " 1 " + date + " \"Vorq " + version +
                       "\" \"User Commands\"\n.SH NAME\n" + escaped(program.name) + " \\- " +
                       escaped(program.summary) + "\n.SH SYNOPSIS\n";
    bool isFirst = true;
    for (const Section& section : program.sections) {
        for (const Command& command : section.commands) {
            if (!std::exchange(isFirst, false)) text += ".br\n";
            text += title(program, section, command);
        }
    }
    text += ".SH DESCRIPTION\n" + paragraph(program.introduction);
    for (const Section& section : program.sections)
        text += sectionText(program, section);
    return text + ".SH NOTES\n" + paragraph(program.remarks) + ".SH SEE ALSO\n.BR " +
           escaped(program.seeAlso) + " (1)\n";
}

} // namespace vorq::packaging
