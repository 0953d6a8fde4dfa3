#include "http/Refusal.h"

#include "engine/Engine.h"
#include "http/JsonText.h"
#include "pages/ProblemPage.h"
#include "storage/Database.h"
#include "support/ApiError.h"
#include "support/Cancellation.h"

#include <cstdio>
#include <new>

namespace vorq::gateway {
namespace {

/// In seconds: for a database that others hold or that is away, and for one that is full.
constexpr int kShortPause = 2;
constexpr int kLongPause = 30;
constexpr auto kFailed = "The Vorq gateway failed. Try again.";

void report(const std::exception& error) {
    std::fprintf(stderr, "vorq-gateway: a request failed: %s\n", error.what());
}

} // namespace

Refusal refusalFor(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const ApiError& error) {
        return {error.status, error.what(), error.retryAfterSeconds, {}, error.field};
    } catch (const EngineError& error) {
        return {error.status, error.what(), std::nullopt, {}};
    } catch (const CancelledError&) {
        return {503, "The Vorq gateway was stopped. Try again in a moment.", std::nullopt, {}};
    } catch (const DatabaseError& error) {
        report(error);
        const int pause = error.isBusy ? kShortPause : kLongPause;
        if (!error.advice.empty()) return {503, error.advice, pause, {}};
    } catch (const std::bad_alloc& error) {
        report(error);
        return {
            503, "The Vorq gateway is short of memory. Try again in a moment.", std::nullopt, {}};
    } catch (const std::exception& error) {
        report(error);
    }
    return {500, kFailed, std::nullopt, {}};
}

HttpAnswer answerFor(const Refusal& refusal, bool asPage) {
    return {.status = refusal.status,
            .contentType = asPage ? kPageType : "application/json",
            .body = asPage ? problemPage(refusal.sentence)
                           : oneLineJson(errorDocument(refusal.sentence, refusal.field)),
            .retryAfterSeconds = refusal.retryAfterSeconds,
            .allowedMethods = refusal.allowedMethods};
}

} // namespace vorq::gateway
