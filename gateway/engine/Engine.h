#pragma once

#include "engine/Analysis.h"
#include "support/SteadyTime.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <variant>
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

/// What one step of a reply brought.
struct ReplyStep {
    enum class Kind { Grew, Waits, Ended };
    Kind kind = Kind::Ended;
    /// The whole reply so far, if it grew.
    std::string text = {};
    /// If it waits: when to step again though nobody called for it.
    SteadyTime again = SteadyTime::max();
};

/// A reply that has ended.
using FinishedReply = std::variant<Analysis, std::vector<Flashcard>, Quiz, ModelList>;

[[nodiscard]] nlohmann::json encode(const FinishedReply& reply);

/// One reply on its way. No function of it waits for anything. Stepped by one thread at a time;
/// destroying it gives the reply up. `step` and `result` may throw EngineError.
class ReplyStream {
  public:
    virtual ~ReplyStream() = default;
    /// Set before the first step. `call` says that a step may bring something new: from any
    /// thread, maybe for nothing, and maybe once the reply is gone.
    virtual void setCaller(const std::function<void()>& /*call*/) {}
    [[nodiscard]] virtual ReplyStep step(SteadyTime now) = 0;
    /// The finished reply, once a step said that it ended.
    [[nodiscard]] virtual FinishedReply result() = 0;
};

/// Answers the AI requests. Thread-safe; failures are EngineError. A function may compute for long
/// but waits for nobody: what others have yet to say comes through the reply.
class Engine {
  public:
    virtual ~Engine() = default;
    /// Whether a function may compute for long though the request is small.
    [[nodiscard]] virtual bool computes() const { return true; }
    [[nodiscard]] virtual std::unique_ptr<ReplyStream> prompt(const PromptRequest& request) = 0;
    [[nodiscard]] virtual std::unique_ptr<ReplyStream> analyze(const AnalyzeRequest& request) = 0;
    /// Ends in flashcards.
    [[nodiscard]] virtual std::unique_ptr<ReplyStream>
    flashcards(const FlashcardsRequest& request) = 0;
    /// Ends in a quiz.
    [[nodiscard]] virtual std::unique_ptr<ReplyStream> quiz(const QuizRequest& request) = 0;
    /// Ends in the models that are offered beside those that the client knows: none, unless the
    /// engine has some.
    [[nodiscard]] virtual std::unique_ptr<ReplyStream> models();
};

} // namespace vorq::gateway
