#include "pages/Markup.h"
#include "pages/FormParts.h"
#include "pages/SignInRows.h"

#include <gtest/gtest.h>

namespace vorq::gateway::testing {
namespace {

TEST(MarkupTest, TextsAndAttributesAreEscaped) {
    EXPECT_EQ(Markup("<b a=\"x\">'&").html(), "&lt;b a=&quot;x&quot;&gt;&#39;&amp;");
    EXPECT_EQ(Markup::element("a", {{"href", "\"><script>"}}, "<i>").html(),
              "<a href=\"&quot;&gt;&lt;script&gt;\">&lt;i&gt;</a>");
}

TEST(MarkupTest, WhatIsNoTextBecomesOne) {
    EXPECT_EQ(Markup(std::string("a\0b\x07\xFFz", 6)).html(), "a b \xEF\xBF\xBDz");
}

TEST(MarkupTest, WhatIsMarkupStays) {
    const Markup inner = Markup::element("b", {}, "x & y") + Markup::literal("<hr>");
    EXPECT_EQ(Markup::element("p", {}, inner).html(), "<p><b>x &amp; y</b><hr></p>");
}

TEST(MarkupTest, InputsHaveNoEnd) {
    EXPECT_EQ(Markup::element("input", {{"name", "n"}}).html(), "<input name=\"n\">");
}

TEST(FormPartsTest, AProblemIsToldWithItsFieldAndTheHintAfterIt) {
    const InputField field{.name = "email", .label = "Email", .hint = "Yours."};
    const std::string html =
        inputField(field, {.sentence = "No address.", .field = "email"}).html();
    EXPECT_NE(html.find("<label for=\"email\">Email</label>"), std::string::npos);
    EXPECT_NE(html.find("aria-describedby=\"email-wrong email-hint\""), std::string::npos);
    EXPECT_NE(html.find("id=\"email-wrong\" role=\"alert\">No address.</p>"), std::string::npos);
    EXPECT_EQ(inputField(field, {.sentence = "Else.", .field = "password"}).html().find("wrong"),
              std::string::npos);
}

TEST(SignInRowsTest, BrowsersAreNamedAsPeopleCallThem) {
    EXPECT_EQ(browserName("Mozilla/5.0 (X11; Linux x86_64; rv:140.0) Gecko/20100101 Firefox/140.0"),
              "Firefox on Linux");
    EXPECT_EQ(browserName("Mozilla/5.0 (Windows NT 10.0) AppleWebKit/537.36 (KHTML, like Gecko) "
                          "Chrome/140.0 Safari/537.36 Edg/140.0"),
              "Edge on Windows");
    EXPECT_EQ(browserName(""), "A browser");
}

} // namespace
} // namespace vorq::gateway::testing
