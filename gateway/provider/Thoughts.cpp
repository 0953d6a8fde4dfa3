#include "provider/Thoughts.h"

#include <algorithm>
#include <array>
#include <optional>

namespace vorq::gateway {
namespace {

struct Marks {
    std::string_view open;
    std::string_view close;
};

constexpr std::array<Marks, 4> kMarks = {{{"<think>", "</think>"},
                                          {"<thinking>", "</thinking>"},
                                          {"<thought>", "</thought>"},
                                          {"[THINK]", "[/THINK]"}}};
constexpr std::string_view kBlanks = " \t\r\n";

std::string_view withoutLeadingBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(kBlanks), text.size()));
}

bool isInCode(std::string_view before) {
    std::size_t fences = 0;
    for (std::size_t at = before.find("```"); at != std::string_view::npos;
         at = before.find("```", at + 3)) {
        ++fences;
    }
    return fences % 2 == 1;
}

/// A reply may speak about the marks as well; a model's own stands at an end of its line.
bool isModelsOwn(std::string_view text, std::size_t at, std::size_t length) {
    const std::string_view before = text.substr(0, at);
    const std::string_view behind = text.substr(at + length);
    const bool beginsLine = before.empty() || before.ends_with('\n');
    const bool endsLine = behind.empty() || behind.starts_with('\n') || behind.starts_with("\r\n");
    return (beginsLine || endsLine) && !before.ends_with('`') && !isInCode(before);
}

std::optional<std::string_view> behindLoneEnd(std::string_view text) {
    for (const Marks& marks : kMarks) {
        const std::size_t at = text.find(marks.close);
        if (at != std::string_view::npos && isModelsOwn(text, at, marks.close.size())) {
            return withoutLeadingBlanks(text.substr(at + marks.close.size()));
        }
    }
    return std::nullopt;
}

} // namespace

std::string_view withoutThoughts(std::string_view reply, bool isComplete) {
    const std::string_view text = withoutLeadingBlanks(reply);
    const auto opened = std::ranges::find_if(
        kMarks, [text](const Marks& marks) { return text.starts_with(marks.open); });
    if (opened != kMarks.end()) {
        const std::size_t end = text.find(opened->close);
        if (end == std::string_view::npos) return {};
        return withoutLeadingBlanks(text.substr(end + opened->close.size()));
    }
    // A mark of which only the beginning has come is not shown either.
    const auto mayOpen = [text](const Marks& marks) { return marks.open.starts_with(text); };
    if (!isComplete && std::ranges::any_of(kMarks, mayOpen)) return {};
    return behindLoneEnd(text).value_or(text);
}

} // namespace vorq::gateway
