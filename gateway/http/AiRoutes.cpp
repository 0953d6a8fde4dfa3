#include "http/AiRoutes.h"

#include "http/EventStream.h"
#include "http/RequestFields.h"
#include "http/WholeReply.h"
#include "support/ApiError.h"
#include "support/Utf8.h"

#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr std::size_t kMostMessages = 40;

std::string textIn(const json& body, const char* key) {
    return sanitized(optionalText(body, key).value_or(""));
}

std::string imageIn(const json& body) {
    std::string image = optionalText(body, "screenDataUrl").value_or("");
    if (!image.empty() && !image.starts_with("data:image/")) {
        throw ApiError(400, "\"screenDataUrl\" must be the data URL of an image.");
    }
    return image;
}

std::vector<ConversationMessage> historyIn(const json& body) {
    const auto list = body.find("recentMessages");
    if (list == body.end() || list->is_null()) return {};
    if (!list->is_array()) throw ApiError(400, "\"recentMessages\" must be an array.");
    std::vector<ConversationMessage> history;
    for (const json& item : *list) {
        if (!item.is_object()) {
            throw ApiError(400, "\"recentMessages\" must hold objects.");
        }
        const std::string role = requiredText(item, "role");
        if (role != "user" && role != "assistant") {
            throw ApiError(400, "The \"role\" of a message must be \"user\" or \"assistant\".");
        }
        history.push_back({role == "user", sanitized(requiredText(item, "content"))});
    }
    if (history.size() > kMostMessages) {
        history.erase(history.begin(), history.end() - kMostMessages);
    }
    return history;
}

/// Routes here ask for a bearer token, so there is a caller.
const Account& callerOf(const ApiCall& call) {
    if (!call.identity) throw ApiError(401, "Your session expired. Sign in again.");
    return call.identity->account;
}

Preferences preferencesOf(const ApiCall& call) {
    if (flag(call.body, "skipUserPreferences")) return {};
    const Account& account = callerOf(call);
    return {.firstName = account.firstName, .useCase = account.useCase};
}

/// The model the request names, or else the one its user chose; flashcards and quizzes name none.
std::string modelFor(const ApiCall& call) {
    const std::string named = textIn(call.body, "preferredModel");
    return trimmed(named).empty() ? callerOf(call).preferredModel : named;
}

PromptRequest promptRequest(const ApiCall& call) {
    PromptRequest request{.prompt = sanitized(requiredText(call.body, "prompt")),
                          .selectedText = textIn(call.body, "selectedText"),
                          .image = imageIn(call.body),
                          .deepResearch = flag(call.body, "deepResearch"),
                          .forceLearn = flag(call.body, "forceLearn"),
                          .whole = !flag(call.body, "stream"),
                          .history = historyIn(call.body),
                          .model = modelFor(call),
                          .preferences = preferencesOf(call)};
    if (trimmed(request.prompt).empty()) throw ApiError(400, "\"prompt\" is empty.");
    return request;
}

std::string requiredMaterial(const json& body) {
    std::string text = sanitized(requiredText(body, "text"));
    if (trimmed(text).empty()) throw ApiError(400, "There is no text to work on.");
    return text;
}

AnalyzeRequest analyzeRequest(const ApiCall& call) {
    return {.text = requiredMaterial(call.body),
            .image = imageIn(call.body),
            .whole = !flag(call.body, "stream"),
            .model = modelFor(call),
            .preferences = preferencesOf(call)};
}

ApiReply reply(std::unique_ptr<ReplyStream> stream, bool whole) {
    if (whole) return {.body = {}, .stream = std::make_unique<WholeReply>(std::move(stream))};
    return {.body = {}, .stream = std::make_unique<EventStream>(std::move(stream))};
}

// For whoever looks whether the gateway works, so it tells nothing of anybody.
ApiReply status(const Engine& engine) {
    const nlohmann::json body{{"service", "vorq-gateway"},
                              {"replies", engine.computes() ? "embedded" : "provider"}};
    return {.answer = HttpAnswer{.body = body.dump()}};
}

} // namespace

void addAiRoutes(RequestRouter& router, Engine& engine) {
    const auto add = [&](const char* path, ApiHandler handler) {
        router.add(path, {.handler = std::move(handler),
                          .needsToken = true,
                          .startsReply = true,
                          .computes = [&engine] { return engine.computes(); }});
    };
    router.addPage("GET", "/status",
                   {.page = [&engine](const PageCall&) { return status(engine); }});
    add("/ai/prompt", [&engine](const ApiCall& call) {
        const PromptRequest request = promptRequest(call);
        return reply(engine.prompt(request), request.whole);
    });
    add("/ai/analyze", [&engine](const ApiCall& call) {
        const AnalyzeRequest request = analyzeRequest(call);
        return reply(engine.analyze(request), request.whole);
    });
    add("/ai/flashcards", [&engine](const ApiCall& call) {
        const FlashcardsRequest request{requiredMaterial(call.body), modelFor(call)};
        return reply(engine.flashcards(request), true);
    });
    add("/ai/quiz", [&engine](const ApiCall& call) {
        const QuizRequest request{requiredMaterial(call.body), textIn(call.body, "focus"),
                                  modelFor(call)};
        return reply(engine.quiz(request), true);
    });
    router.add("/ai/models",
               {.handler = [&engine](const ApiCall&) { return reply(engine.models(), true); },
                .method = "GET",
                .needsToken = true,
                .startsReply = true});
}

} // namespace vorq::gateway
