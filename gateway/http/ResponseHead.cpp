#include "http/ResponseHead.h"

#include <boost/beast/http/field.hpp>

#include <string>

namespace vorq::gateway {
namespace {

namespace http = boost::beast::http;

/// A form may lead on to the program's own listener, where a sign-in ends.
constexpr auto kContentPolicy =
    "default-src 'none'; style-src 'self'; img-src 'self'; base-uri 'none'; frame-ancestors "
    "'none'; form-action 'self' http://127.0.0.1:18742";

void setPageFields(http::response_header<>& head) {
    head.set("Content-Security-Policy", kContentPolicy);
    head.set("X-Frame-Options", "DENY");
    head.set("Cross-Origin-Opener-Policy", "same-origin");
    head.set("Cross-Origin-Resource-Policy", "same-origin");
    // With "no-referrer" browsers would not say either where a form comes from.
    head.set("Referrer-Policy", "same-origin");
}

} // namespace

void setFields(http::response_header<>& head, std::string_view contentType) {
    head.set(http::field::content_type,
             boost::beast::string_view(contentType.data(), contentType.size()));
    head.set(http::field::cache_control, "no-store");
    head.set("X-Content-Type-Options", "nosniff");
    head.set(http::field::connection, "close");
    if (contentType.starts_with("text/html")) setPageFields(head);
}

void setFields(http::response_header<>& head, const HttpAnswer& answer) {
    setFields(head, answer.contentType);
    if (!answer.location.empty()) head.set(http::field::location, answer.location);
    for (const std::string& cookie : answer.cookies)
        head.insert(http::field::set_cookie, cookie);
    if (!answer.allowedMethods.empty()) head.set(http::field::allow, answer.allowedMethods);
    if (answer.retryAfterSeconds)
        head.set(http::field::retry_after, std::to_string(*answer.retryAfterSeconds));
}

} // namespace vorq::gateway
