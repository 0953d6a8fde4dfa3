#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::evaluation {

/// Folders of texts. The engine was set by its answers on "tuned" and "fresh" and not by those on
/// "held". "late", "fresh" and "sealed" were written after its word lists; "sealed" is the half of
/// the newest texts that is measured only when the rules are done.
inline constexpr std::array<std::string_view, 5> kParts{"tuned", "held", "late", "fresh", "sealed"};

/// A question on a text, and the sentences of the text that answer it.
struct EvalQuestion {
    /// "person", "place", "time", "quantity", "reason", "negation", "definition" or "other".
    std::string kind;
    std::string question;
    std::vector<std::string> answers;
};

struct EvalText {
    /// The name of its file without the ending, as in "en-news".
    std::string name;
    /// The language by its two letters.
    std::string language;
    /// One of `kParts`.
    std::string part;
    std::string text;
    std::vector<EvalQuestion> questions;
};

/// The texts in the parts' folders below `folder`, by name. Throws std::runtime_error where a file
/// cannot be read or a question has no marked answer.
[[nodiscard]] std::vector<EvalText> readEvalTexts(const std::filesystem::path& folder);

/// Reads "⟦1|A sentence.⟧" marks and, below a line "=====", "1 kind question" lines.
[[nodiscard]] EvalText readEvalText(std::string_view content);

/// Whether a quote is one of the right sentences. What stands around it, such as the name of a
/// speaker, may make it half again as long, or it may lack half; two sentences in one are wrong.
[[nodiscard]] bool isRight(const EvalQuestion& question, std::string_view quote);

} // namespace vorq::evaluation
