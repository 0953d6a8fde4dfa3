#include "backend/account/SignInUrl.h"

#include <gmock/gmock.h>

namespace vorq {
namespace {

using namespace SignInUrl;

TEST(SignInUrl, AHandoffCodeIsInTheQueryOrElseInTheFragment) {
    EXPECT_EQ(handoffCode(QUrl("vorq://auth/callback?handoff=a%20b")), "a b");
    EXPECT_EQ(handoffCode(QUrl("vorq://auth/callback#handoff=abc")), "abc");
    EXPECT_EQ(handoffCode(QUrl("vorq://auth/callback?handoff=")), std::nullopt);
    EXPECT_EQ(handoffCode(QUrl("https://elsewhere/?handoff=abc")), std::nullopt);
}

TEST(SignInUrl, TheQueryComesBeforeTheFragment) {
    EXPECT_EQ(queryValue("error", QUrl("vorq://auth/callback?error=a#error=b")), "a");
    EXPECT_EQ(queryValue("error", QUrl("vorq://auth/callback?error=#error=b")), "");
    EXPECT_EQ(queryValue("error", QUrl("vorq://auth/callback?error&error=a")), "a");
    EXPECT_EQ(queryValue("error", QUrl("vorq://auth/callback?error#error=b")), "b");
    EXPECT_EQ(queryValue("error", QUrl("vorq://auth/callback?other=a")), std::nullopt);
}

TEST(SignInUrl, CallbacksComeToTheLoopbackOrByTheScheme) {
    for (const char* url : {"http://127.0.0.1:18742/callback", "http://LOCALHOST/callback/more?x=y",
                            "https://localhost:3000/auth/mac-callback.html", "VORQ://Auth/callback",
                            "vorq://auth/callback/", "http://127.0.0.1/auth/mac-callback.html?x"})
        EXPECT_TRUE(isOAuthCallback(QUrl(url))) << url;
}

TEST(SignInUrl, OtherPlacesAreNoCallbacks) {
    for (const char* url :
         {"https://127.0.0.1/callback", "http://example.org/callback", "vorq://auth/callbacks",
          "vorq://auth", "vorq://other/callback", "http://127.0.0.1/", "mailto:a@b", ""})
        EXPECT_FALSE(isOAuthCallback(QUrl(url))) << url;
}

} // namespace
} // namespace vorq
