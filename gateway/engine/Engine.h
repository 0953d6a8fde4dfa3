#pragma once

#include "engine/Analysis.h"
#include "support/Cancellation.h"

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vorq::gateway {

/// Why an engine could not answer, as a sentence for the user and the fitting HTTP status.
class EngineError : public std::runtime_error {
  public:
    EngineError(int httpStatus, const std::string& sentence)
        : std::runtime_error(sentence), status(httpStatus) {}
    int status;
};

struct ConversationMessage {
    bool fromUser = false;
    std::string content;
};

/// What is known of the person asking; empty where they do not want it used.
struct Preferences {
    std::string firstName;
    std::string useCase;
};

struct PromptRequest {
    std::string prompt;
    std::string selectedText;
    /// A data URL, or empty.
    std::string image;
    bool deepResearch = false;
    bool forceLearn = false;
    /// The caller takes the reply whole, and may expect its parts in the fields of `Analysis`.
    bool whole = false;
    /// Oldest first. The last entry may be this very prompt.
    std::vector<ConversationMessage> history;
    std::string model;
    Preferences preferences;
};

struct AnalyzeRequest {
    std::string text;
    std::string image;
    bool whole = false;
    std::string model;
    Preferences preferences;
};

struct FlashcardsRequest {
    std::string text;
    std::string model = {};
};

struct QuizRequest {
    std::string text;
    std::string focus;
    std::string model = {};
};

/// One reply on its way. Used from one thread. Both functions may throw EngineError, and
/// CancelledError once nobody wants the reply.
class ReplyStream {
  public:
    virtual ~ReplyStream() = default;
    /// Waits for more and gives the whole reply so far; nothing once the reply is complete.
    [[nodiscard]] virtual std::optional<std::string> next(const Cancelled& cancelled) = 0;
    /// The finished reply, after `next` gave nothing.
    [[nodiscard]] virtual Analysis result() = 0;
};

/// Answers the AI requests. Thread-safe; failures are EngineError.
class Engine {
  public:
    virtual ~Engine() = default;
    [[nodiscard]] virtual std::unique_ptr<ReplyStream> prompt(const PromptRequest& request,
                                                              const Cancelled& cancelled) = 0;
    [[nodiscard]] virtual std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest& request,
                                                               const Cancelled& cancelled) = 0;
    [[nodiscard]] virtual std::vector<Flashcard> flashcards(const FlashcardsRequest& request,
                                                            const Cancelled& cancelled) = 0;
    [[nodiscard]] virtual Quiz quiz(const QuizRequest& request, const Cancelled& cancelled) = 0;
};

} // namespace vorq::gateway
