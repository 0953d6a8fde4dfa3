#pragma once

#include "backend/account/BrowserSignIn.h"
#include "backend/http/Errors.h"
#include "support/async/Wakeup.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace vorq {

/// A browser that a test drives: each attempt ends when it is fired, as is said here.
class ScriptedBrowserSignIn final : public BrowserSignIn {
  public:
    QCoro::Task<Session> signInInBrowser(QString mode, std::stop_token stop) override {
        modes << mode;
        const Wakeup wakeup;
        attempts.push_back(wakeup);
        const std::stop_callback onStop(stop, [wakeup] { wakeup.fire(); });
        co_await wakeup;
        if (stop.stop_requested()) throw SignInError::cancelled();
        if (error) throw *error;
        if (!session) throw ServiceError::requestFailed("Refused.");
        co_return *session;
    }
    void cancelPending() override { ++cancels; }

    QStringList modes;
    std::vector<Wakeup> attempts;
    int cancels = 0;
    std::optional<SignInError> error;
    std::optional<Session> session;
};

} // namespace vorq
