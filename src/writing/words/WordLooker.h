#pragma once

#include "platform/Accessibility.h"

#include <QCoroTask>
#include <QRectF>

#include <optional>
#include <stop_token>
#include <vector>

namespace vorq {

/// Words of a text that is or was selected in an application.
struct WordsSought {
    std::optional<ProcessId> source;
    /// All of what was selected, and where that is in the application's text.
    QString selection;
    TextRange selected;
    /// The words within the selection.
    std::vector<TextRange> words;
};

/// Looks where single words are on the screen. A look ends soon whatever the application does, and
/// takes neither focus nor clipboard.
class WordLooker {
  public:
    /// In screen coordinates, one for each word; nothing for those that are not to be seen.
    using Frames = std::vector<std::optional<QRectF>>;

    WordLooker() = default;
    WordLooker(const WordLooker&) = delete;
    WordLooker& operator=(const WordLooker&) = delete;
    virtual ~WordLooker() = default;

    /// Nothing if the application did not answer in time or must not be asked. No word is seen
    /// where the text is no longer what was selected.
    virtual QCoro::Task<std::optional<Frames>> look(WordsSought sought, std::stop_token stop) = 0;
};

/// Sees no word.
class NoWordLooker final : public WordLooker {
  public:
    QCoro::Task<std::optional<Frames>> look(WordsSought, std::stop_token) override {
        co_return std::nullopt;
    }
};

} // namespace vorq
