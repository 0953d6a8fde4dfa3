#pragma once

#include "platform/documents/DocumentTools.h"

namespace vorq {

/// The end of a sentence that begins with the name of the document.
[[nodiscard]] QString sentenceOf(DocumentFailure failure);

} // namespace vorq
