#pragma once

#include "auth/WebAccounts.h"
#include "http/Api.h"
#include "pages/FormParts.h"
#include "support/ApiError.h"

#include <optional>
#include <string>

namespace vorq::gateway {

/// One request of a browser: who it is signed in as, and whether a form is one that it was given
/// here. Another website can make a browser post a form, but cannot read the token in ours, which
/// follows from a cookie that no script sees.
class Visit {
  public:
    /// `web` and `call` outlive it.
    Visit(WebAccounts& web, const PageCall& call);

    [[nodiscard]] const std::optional<Identity>& identity() const { return m_identity; }
    /// Of who is signed in; empty for nobody.
    [[nodiscard]] std::string knownEmail() const;
    /// Throws ApiError 403 if nobody is signed in.
    [[nodiscard]] const Identity& requiredIdentity() const;

    /// For forms of anybody, and for those of whoever is signed in.
    [[nodiscard]] std::string strangersToken() const;
    [[nodiscard]] std::string ownersToken() const;
    /// Throw ApiError 403 unless the form brings that token.
    void checkStrangersForm() const;
    void checkOwnersForm() const;

    [[nodiscard]] std::string typed(std::string_view field) const;
    [[nodiscard]] SignInOrigin origin() const;
    /// Whether the browser runs as the user who runs the gateway, on the same computer.
    [[nodiscard]] bool isOwnersBrowser() const;

    /// The answer, with the cookie that the forms in it need, and the status of what went wrong.
    [[nodiscard]] ApiReply page(std::string html) const;
    [[nodiscard]] ApiReply page(std::string html, const ApiError& error) const;
    /// A redirection that signs the browser in, or out with an empty secret.
    [[nodiscard]] ApiReply signedInto(const std::string& location, const std::string& secret) const;

  private:
    void checkToken(const std::string& expected) const;
    [[nodiscard]] ApiReply withFormCookie(HttpAnswer answer) const;

    const PageCall& m_call;
    std::optional<Identity> m_identity;
    /// The secret of this browser's forms, which is fresh if it brought none.
    std::string m_formSecret;
    bool m_isFresh = false;
};

/// Where a browser goes next, by GET.
[[nodiscard]] ApiReply redirection(const std::string& location);

/// A failure of what was typed, to be shown beside it; others are thrown on.
[[nodiscard]] FormProblem problemFor(const ApiError& error);

} // namespace vorq::gateway
