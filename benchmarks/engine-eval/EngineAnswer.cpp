#include "EngineAnswer.h"

#include "engine/embedded/ReplyDraft.h"

namespace vorq::evaluation {

std::string engineAnswer(std::string_view text, std::string_view question) {
    constexpr std::string_view quote = "\n\n> ";
    gateway::PromptRequest request;
    request.prompt = question;
    request.selectedText = text;
    const std::string reply = gateway::draftReply(request).text();
    const std::size_t begin = reply.find(quote);
    if (begin == std::string::npos) return {};
    const std::size_t from = begin + quote.size();
    return reply.substr(from, reply.find("\n\n", from) - from);
}

} // namespace vorq::evaluation
