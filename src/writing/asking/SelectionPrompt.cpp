#include "writing/asking/SelectionPrompt.h"

#include "backend/account/AccountSession.h"
#include "backend/api/VorqAPIService.h"
#include "backend/http/Errors.h"

#include <utility>

namespace vorq {

QCoro::Task<AIAnalysis> askAboutSelection(AccountSession& account, VorqAPIService& api,
                                          QString prompt, QString selection, std::stop_token stop) {
    PromptRequest request;
    request.prompt = std::move(prompt);
    request.selectedText = std::move(selection);
    request.skipUserPreferences = true;
    request.preferredModel = account.preferredModelForAIRequest();
    AIAnalysis analysis = co_await account.tokens().withFreshSessionToken(
        [&api, request, stop](const QString& token) {
            if (stop.stop_requested()) throw OperationCancelled();
            return api.prompt(token, request, stop);
        },
        stop);
    co_return analysis;
}

} // namespace vorq
