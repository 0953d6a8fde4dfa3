#include "capture/copy/SelectionWrite.h"

#include "support/text/Text.h"

namespace vorq {
namespace {

constexpr int deepestLevel = 11;
constexpr std::int64_t nowhere = -1;

bool isPlacedRange(const std::optional<TextRange>& range) {
    return range && range->length >= 1 && range->location != nowhere;
}

std::optional<TextRange> rangeOfFirst(const QString& text, const QString& in) {
    QString found = text;
    qsizetype at = in.indexOf(found);
    if (at < 0) {
        found = trimmed(text).toString();
        at = found.isEmpty() ? -1 : in.indexOf(found);
    }
    if (at < 0) return std::nullopt;
    return TextRange{.location = at, .length = found.size()};
}

bool isSameButForEnds(const QString& one, const QString& other) {
    if (one == other) return true;
    const auto core = trimmed(one);
    return !core.isEmpty() && core == trimmed(other);
}

} // namespace

bool hasAnySelection(const AccessibleElement& element) {
    if (!element.selectedText().value_or(QString()).isEmpty()) return true;
    const auto range = element.selectedTextRange();
    return range && range->length >= 1;
}

AccessibleElementPtr findTextElement(const AccessibleElementPtr& in, const QString& containing,
                                     int depth) {
    if (!in || depth > deepestLevel) return nullptr;
    if (const auto value = in->value()) {
        const auto core = trimmed(containing);
        if (value->contains(containing) || value->contains(core)) return in;
    }
    const auto children = in->children();
    if (!children) return nullptr;
    for (const AccessibleElementPtr& child : *children)
        if (auto found = findTextElement(child, containing, depth + 1)) return found;
    return nullptr;
}

bool selectionMatches(const QString& original, const AccessibleElement& in) {
    const auto selected = in.selectedText();
    return selected && !selected->isEmpty() && isSameButForEnds(*selected, original);
}

bool selectionReplaced(const QString& original, const QString& replacement,
                       const AccessibleElement& in) {
    const QString selected = in.selectedText().value_or(QString());
    if (!selected.isEmpty() && selected == replacement) return true;
    if (!selected.isEmpty() && selected == original) return false;
    const auto value = in.value();
    if (!value) {
        if (!in.selectedText().value_or(QString()).isEmpty()) return false;
        const auto range = in.selectedTextRange();
        return !range || range->length < 1;
    }
    if (replacement.isEmpty() || !value->contains(replacement)) return false;
    return original.isEmpty() || original == replacement || !value->contains(original);
}

bool restoreSelection(const QString& original, const std::optional<TextRange>& preferredRange,
                      AccessibleElement& in) {
    if (hasAnySelection(in) && selectionMatches(original, in)) return true;
    if (isPlacedRange(preferredRange) && in.setSelectedTextRange(*preferredRange)) return true;
    const auto value = in.value();
    if (original.isEmpty() || !value) return false;
    const auto range = rangeOfFirst(original, *value);
    return range && in.setSelectedTextRange(*range);
}

bool holdsOriginal(const QString& original, const std::optional<TextRange>& preferredRange,
                   const AccessibleElement& in) {
    if (hasAnySelection(in) && in.selectedText()) return selectionMatches(original, in);
    const auto value = in.value();
    if (!value || original.isEmpty()) return true;
    if (!isPlacedRange(preferredRange)) return rangeOfFirst(original, *value).has_value();
    if (preferredRange->location > value->size()) return false;
    return isSameButForEnds(value->mid(preferredRange->location, preferredRange->length), original);
}

} // namespace vorq
