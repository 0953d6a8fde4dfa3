#pragma once

#include "backend/api/Session.h"

#include <QCoroTask>

#include <stop_token>

namespace vorq {

/// Sign-in on the website, in the user's own browser. Main thread only.
class BrowserSignIn {
  public:
    BrowserSignIn() = default;
    BrowserSignIn(const BrowserSignIn&) = delete;
    BrowserSignIn& operator=(const BrowserSignIn&) = delete;
    virtual ~BrowserSignIn() = default;

    /// Opens the page of the mode ("sign-in" or "sign-up") and waits for what comes back. Throws
    /// SignInError or ServiceError.
    virtual QCoro::Task<Session> signInInBrowser(QString mode, std::stop_token stop) = 0;

    /// Ends the attempt that is under way, if any, with SignInError::cancelled.
    virtual void cancelPending() = 0;
};

} // namespace vorq
