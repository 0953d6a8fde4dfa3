#pragma once

#include <QString>

namespace vorq {

/// What the writer's words in the prompt line are, but for a direction to the model. The
/// classifiers are independent of each other; whoever acts on them asks in this order.

/// The words in lower case, with single blanks, without white space and then without ".", "!" and
/// "?" at both ends.
[[nodiscard]] QString normalizedAsk(QStringView text);

/// "Open in Vorq": the selection is to go to the panel.
[[nodiscard]] bool isSendToVorqPrompt(QStringView text);

/// "Replace it": the suggestion is to be written over the selection.
[[nodiscard]] bool isApplyOnlyPrompt(QStringView text);

/// "Again": another suggestion is wanted in the place of the one on show.
[[nodiscard]] bool isAnotherTakePrompt(QStringView text);

} // namespace vorq
