#include "web/ConnectionTest.h"

#include "http/Api.h"
#include "provider/ProviderEngine.h"

#include <algorithm>

namespace vorq::gateway {
namespace {

/// A model that has to be loaded first takes its time; nobody looks at a browser for longer.
constexpr std::chrono::seconds kTestPatience{45};

std::unique_ptr<ReplyStream> askForAWord(ProviderConfig config) {
    config.replyTimeout = std::min<std::chrono::milliseconds>(config.replyTimeout, kTestPatience);
    EngineSwitch engine(std::make_shared<ProviderEngine>(std::move(config)));
    PromptRequest request;
    request.prompt = "Answer with the word OK.";
    request.whole = true;
    // The reply keeps the engine.
    return engine.prompt(request);
}

} // namespace

ConnectionTest::ConnectionTest(const ProviderConfig& config, Show show)
    : ReplyFeed(askForAWord(config)), m_show(std::move(show)) {}

const char* ConnectionTest::contentType() const {
    return kPageType;
}

FeedStep ConnectionTest::next(SteadyTime now) {
    try {
        ReplyStep step = stepReply(now);
        while (step.kind == ReplyStep::Kind::Grew)
            step = stepReply(now);
        if (step.kind == ReplyStep::Kind::Waits) return {.again = step.again};
        static_cast<void>(result());
        return {.bytes = m_show({}), .isLast = true};
    } catch (const EngineError& error) {
        return {.bytes = m_show(error.what()), .isLast = true};
    }
}

} // namespace vorq::gateway
