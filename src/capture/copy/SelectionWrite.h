#pragma once

#include "platform/Accessibility.h"

#include <QString>

#include <optional>

namespace vorq {

/// What is needed to put a text in the place of a selection by accessibility. The functions block
/// while they read; see Accessibility for the thread.

/// Whether anything is selected, white space counts.
[[nodiscard]] bool hasAnySelection(const AccessibleElement& element);

/// The first element, the root or below it, whose value holds the text, as it is or trimmed; it
/// looks at twelve levels. Null for none.
[[nodiscard]] AccessibleElementPtr findTextElement(const AccessibleElementPtr& in,
                                                   const QString& containing, int depth = 0);

/// Whether what is selected is the original, white space at both ends aside.
[[nodiscard]] bool selectionMatches(const QString& original, const AccessibleElement& in);

/// Whether the replacement seems to stand where the original was selected.
[[nodiscard]] bool selectionReplaced(const QString& original, const QString& replacement,
                                     const AccessibleElement& in);

/// Selects the original again: the range that is preferred, else where it first occurs. False if
/// that cannot be done.
bool restoreSelection(const QString& original, const std::optional<TextRange>& preferredRange,
                      AccessibleElement& in);

/// Whether it is still the text that was seen: the original is selected, or stands in the range, or
/// where there is no range occurs anywhere. An element that tells no text is not known to be
/// another one.
[[nodiscard]] bool holdsOriginal(const QString& original,
                                 const std::optional<TextRange>& preferredRange,
                                 const AccessibleElement& in);

} // namespace vorq
