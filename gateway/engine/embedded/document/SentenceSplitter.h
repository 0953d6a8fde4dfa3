#pragma once

#include "engine/embedded/words/Language.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// Finds the sentences of paragraphs in one language, in time linear in them. For one thread.
class SentenceSplitter {
  public:
    explicit SentenceSplitter(Language language);
    ~SentenceSplitter();
    SentenceSplitter(const SentenceSplitter&) = delete;
    SentenceSplitter& operator=(const SentenceSplitter&) = delete;

    /// Calls `found` with each sentence of `paragraph`, which is valid UTF-8 in which line ends are
    /// blanks. A sentence of excessive length comes in pieces of at most 1000 bytes.
    void split(std::string_view paragraph, const std::function<void(std::string_view)>& found);

  private:
    struct Breaks;

    [[nodiscard]] bool continuesBehind(std::string_view paragraph, std::size_t end) const;
    [[nodiscard]] bool isOrdinal(std::string_view paragraph, std::size_t point,
                                 std::string_view next) const;
    [[nodiscard]] bool opensSentence(std::string_view next) const;
    [[nodiscard]] bool isShortened(std::string_view word, bool isCapital, std::size_t end) const;

    Language m_language;
    std::unique_ptr<Breaks> m_breaks;
    std::vector<std::size_t> m_ends;
};

[[nodiscard]] std::vector<std::string> splitSentences(std::string_view paragraph,
                                                      Language language = Language::English);

} // namespace vorq::gateway
