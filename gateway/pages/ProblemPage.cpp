#include "pages/ProblemPage.h"

#include "pages/PageFrame.h"

namespace vorq::gateway {

std::string problemPage(const std::string& sentence) {
    const Markup content = Markup::element("h1", {}, "That did not work") +
                           Markup::element("p", {{"role", "alert"}}, sentence) +
                           Markup::element("p", {}, link("/account.html", "Your account"));
    return documentOf(
        {.title = "Problem", .main = Markup::element("div", {{"class", "card"}}, content)});
}

} // namespace vorq::gateway
