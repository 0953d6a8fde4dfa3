#include "provider/ProviderEngine.h"

#include "provider/ChatRequest.h"
#include "provider/ChatStreamReader.h"
#include "provider/ModelJson.h"
#include "provider/ProviderError.h"
#include "provider/ProviderTransfer.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;
using Steady = std::chrono::steady_clock;

// Each step carries the whole reply so far, so steps closer together would only repeat it.
constexpr std::chrono::milliseconds kStepInterval{40};
constexpr std::chrono::milliseconds kReadTime{20};
// How long a connection may stay open without a word behind a finished reply.
constexpr std::chrono::milliseconds kFinishGrace{2'000};

constexpr auto kCutShort = "*The reply ends here: the model reached its length limit. Ask it to go "
                           "on.*";

/// Says below a reply that it was cut. Parts that programs read are left as they are.
void noteCut(Analysis& analysis) {
    if (analysis.feedback.starts_with('[')) return;
    if (!analysis.feedback.empty()) analysis.feedback += "\n\n";
    analysis.feedback += kCutShort;
}

class ProviderStream final : public ReplyStream {
  public:
    ProviderStream(const ProviderConfig& config, const json& body, bool whole,
                   const Cancelled& cancelled)
        : config_(config),
          transfer_(config, body.dump(-1, ' ', false, json::error_handler_t::replace)),
          whole_(whole) {
        transfer_.awaitAcceptance(cancelled);
    }

    std::optional<std::string> next(const Cancelled& cancelled) override {
        try {
            return step(cancelled);
        } catch (const EngineError& error) {
            throw EngineError(error.status, withoutKey(config_, error.what()));
        }
    }

    Analysis result() override {
        Analysis analysis;
        if (whole_) {
            analysis = readWholeReply(reader_.text());
        } else {
            analysis.summary = reader_.text();
        }
        analysis.sources = reader_.sources();
        if (reader_.isCutShort()) noteCut(analysis);
        return analysis;
    }

    [[nodiscard]] std::string finalText(const Cancelled& cancelled) {
        while (next(cancelled)) {
        }
        return std::string(reader_.text());
    }

  private:
    std::optional<std::string> step(const Cancelled& cancelled) {
        while (true) {
            const bool due = reader_.isDone() || Steady::now() - lastStep_ >= kStepInterval;
            if (due && showsSomethingNew()) {
                lastStep_ = Steady::now();
                return std::string(reader_.text());
            }
            if (finished_) return std::nullopt;
            const std::optional<std::string> bytes = readMore(cancelled);
            if (bytes) reader_.feed(*bytes);
            if (reader_.hasBegun()) transfer_.noteReplyBegan();
            if (!bytes || reader_.isDone()) {
                reader_.finish();
                finished_ = true;
            }
        }
    }

    /// A reply becomes shorter where its beginning turns out to have been a thought.
    bool showsSomethingNew() {
        const std::size_t size = reader_.text().size();
        return size != std::exchange(shown_, size) && size != 0;
    }

    /// Nothing at the end of the answer, which is also where nothing more follows a finished reply.
    std::optional<std::string> readMore(const Cancelled& cancelled) {
        try {
            std::optional<std::string> bytes = transfer_.read(kReadTime, cancelled);
            if (!bytes || !bytes->empty()) lastBytes_ = Steady::now();
            const bool isOver = Steady::now() - lastBytes_ > kFinishGrace;
            return reader_.hasFinished() && isOver ? std::nullopt : bytes;
        } catch (const EngineError&) {
            if (!reader_.hasFinished()) throw;
            return std::nullopt;
        }
    }

    const ProviderConfig& config_;
    ProviderTransfer transfer_;
    ChatStreamReader reader_;
    bool whole_;
    bool finished_ = false;
    std::size_t shown_ = 0;
    Steady::time_point lastStep_;
    Steady::time_point lastBytes_ = Steady::now();
};

} // namespace

ProviderEngine::ProviderEngine(ProviderConfig config) : config_(std::move(config)) {}

std::unique_ptr<ReplyStream> ProviderEngine::prompt(const PromptRequest& request,
                                                    const Cancelled& cancelled) {
    const json body = promptBody(request, providerModel(config_, request.model));
    return std::make_unique<ProviderStream>(config_, body, request.whole, cancelled);
}

std::unique_ptr<ReplyStream> ProviderEngine::analyze(const AnalyzeRequest& request,
                                                     const Cancelled& cancelled) {
    const json body = analyzeBody(request, providerModel(config_, request.model));
    return std::make_unique<ProviderStream>(config_, body, request.whole, cancelled);
}

std::vector<Flashcard> ProviderEngine::flashcards(const FlashcardsRequest& request,
                                                  const Cancelled& cancelled) {
    const json body = flashcardsBody(request.text, providerModel(config_, request.model));
    ProviderStream stream(config_, body, true, cancelled);
    std::vector<Flashcard> cards = readFlashcards(stream.finalText(cancelled));
    if (cards.empty()) {
        throw EngineError(502, "The model's flashcards could not be read. Try again.");
    }
    return cards;
}

Quiz ProviderEngine::quiz(const QuizRequest& request, const Cancelled& cancelled) {
    const json body = quizBody(request, providerModel(config_, request.model));
    ProviderStream stream(config_, body, true, cancelled);
    Quiz quiz = readQuiz(stream.finalText(cancelled));
    if (quiz.questions.empty()) {
        throw EngineError(502, "The model's quiz could not be read. Try again.");
    }
    return quiz;
}

} // namespace vorq::gateway
