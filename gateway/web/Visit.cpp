#include "web/Visit.h"

#include "support/LoopbackSockets.h"
#include "support/Secrets.h"
#include "support/Utf8.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>

namespace vorq::gateway {
namespace {

constexpr std::string_view kSessionCookie = "vorq_session";
constexpr std::string_view kFormCookie = "vorq_form";
constexpr std::size_t kSecretLength = 43;

/// The first value of that name; only what could be a secret of ours.
std::string cookieIn(std::string_view header, std::string_view name) {
    while (!header.empty()) {
        const std::string_view pair = trimmed(header.substr(0, header.find(';')));
        header.remove_prefix(std::min(header.size(), header.find(';')));
        if (!header.empty()) header.remove_prefix(1);
        if (!pair.starts_with(name) || !pair.substr(name.size()).starts_with('=')) continue;
        const std::string value(pair.substr(name.size() + 1));
        const bool isSecret =
            value.size() == kSecretLength && std::ranges::all_of(value, [](char c) {
                return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-' || c == '_';
            });
        return isSecret ? value : std::string();
    }
    return {};
}

/// By TLS a name that browsers take from this very host alone: not from another one of its domain,
/// nor without TLS.
std::string nameOf(std::string_view cookie, bool isSecure) {
    return std::string(isSecure ? "__Host-" : "") + std::string(cookie);
}

/// Empty, it is forgotten.
std::string cookie(std::string_view name, const std::string& value, bool isSecure) {
    std::string text = nameOf(name, isSecure) + "=" + value + "; Path=/; HttpOnly; SameSite=Strict";
    if (isSecure) text += "; Secure";
    if (value.empty()) text += "; Max-Age=0";
    return text;
}

} // namespace

Visit::Visit(WebAccounts& web, const PageCall& call)
    : m_call(call),
      m_identity(
          web.identify(cookieIn(call.request.cookie, nameOf(kSessionCookie, call.isSecure)))),
      m_formSecret(cookieIn(call.request.cookie, nameOf(kFormCookie, call.isSecure))) {
    if (m_identity) m_identity->address = call.sender;
    if (!m_formSecret.empty()) return;
    m_formSecret = randomSecret();
    m_isFresh = true;
}

std::string Visit::knownEmail() const {
    return m_identity ? m_identity->account.email : std::string();
}

const Identity& Visit::requiredIdentity() const {
    if (!m_identity) throw ApiError(403, "You are signed out. Sign in again.");
    return *m_identity;
}

std::string Visit::strangersToken() const {
    return derivedToken(m_formSecret, "form of anybody");
}

std::string Visit::ownersToken() const {
    return derivedToken(requiredIdentity().token, "form of the owner");
}

void Visit::checkToken(const std::string& expected) const {
    if (!isSameSecret(typed(kTokenField), expected)) {
        throw ApiError(403, "This form is no longer good. Load its page again.");
    }
}

void Visit::checkStrangersForm() const {
    checkToken(strangersToken());
}

void Visit::checkOwnersForm() const {
    checkToken(ownersToken());
}

std::string Visit::typed(std::string_view field) const {
    return fieldIn(m_call.form, field);
}

SignInOrigin Visit::origin() const {
    return {.isBrowser = true, .agent = m_call.request.userAgent, .address = m_call.sender};
}

bool Visit::isOwnersBrowser() const {
    return m_call.isFromHere && peerUser(m_call.request.peer, m_call.request.own) == getuid();
}

ApiReply Visit::withFormCookie(HttpAnswer answer) const {
    if (m_isFresh) answer.cookies.push_back(cookie(kFormCookie, m_formSecret, m_call.isSecure));
    return {.answer = std::move(answer)};
}

ApiReply Visit::page(std::string html) const {
    return withFormCookie({.contentType = kPageType, .body = std::move(html)});
}

ApiReply Visit::page(std::string html, const ApiError& error) const {
    return withFormCookie({.status = error.status,
                           .contentType = kPageType,
                           .body = std::move(html),
                           .retryAfterSeconds = error.retryAfterSeconds});
}

ApiReply Visit::signedInto(const std::string& location, const std::string& secret) const {
    return {.answer = HttpAnswer{.status = 303,
                                 .contentType = kPageType,
                                 .location = location,
                                 .cookies = {cookie(kSessionCookie, secret, m_call.isSecure)}}};
}

ApiReply redirection(const std::string& location) {
    return {.answer = HttpAnswer{.status = 303, .contentType = kPageType, .location = location}};
}

FormProblem problemFor(const ApiError& error) {
    return {.sentence = error.what(), .field = error.field};
}

} // namespace vorq::gateway
