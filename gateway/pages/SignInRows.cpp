#include "pages/SignInRows.h"

#include "pages/AccountPage.h"

#include <array>
#include <ctime>
#include <utility>

namespace vorq::gateway {
namespace {

using Mark = std::pair<std::string_view, std::string_view>;

/// The names that browsers carry; most carry those of others behind their own.
constexpr std::array<Mark, 6> kBrowserMarks = {{{"Firefox/", "Firefox"},
                                                {"Edg/", "Edge"},
                                                {"OPR/", "Opera"},
                                                {"Vivaldi/", "Vivaldi"},
                                                {"Chrome/", "Chrome or Chromium"},
                                                {"Safari/", "Safari"}}};
constexpr std::array<Mark, 6> kSystemMarks = {{{"Android", "Android"},
                                               {"iPhone", "iPhone"},
                                               {"iPad", "iPad"},
                                               {"Windows", "Windows"},
                                               {"Macintosh", "macOS"},
                                               {"Linux", "Linux"}}};

template<std::size_t Size>
std::string_view nameIn(std::string_view agent, const std::array<Mark, Size>& marks) {
    for (const auto& [mark, name] : marks)
        if (agent.contains(mark)) return name;
    return {};
}

Markup momentOf(std::int64_t ms) {
    const std::time_t seconds = ms / 1000;
    std::tm parts{};
    gmtime_r(&seconds, &parts);
    std::array<char, 32> machine{};
    std::array<char, 32> shown{};
    std::strftime(machine.data(), machine.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
    std::strftime(shown.data(), shown.size(), "%Y-%m-%d %H:%M UTC", &parts);
    return Markup::element("time", {{"datetime", machine.data()}}, shown.data());
}

Markup rowOf(const SignIn& signIn, bool isOwn, const std::string& token) {
    const std::string name =
        signIn.origin.isBrowser ? browserName(signIn.origin.agent) : std::string("Vorq");
    Markup meta = Markup("Last used ") + momentOf(signIn.lastUsedAt) + Markup(", signed in ") +
                  momentOf(signIn.createdAt);
    if (!signIn.origin.address.empty()) meta += Markup(" from " + signIn.origin.address);
    const Markup text =
        Markup::element("div", {},
                        Markup::element("strong", {}, isOwn ? name + " (this browser)" : name) +
                            Markup::element("span", {{"class", "meta"}}, meta));
    if (isOwn) return Markup::element("li", {}, text);
    const Markup end = Markup::element(
        "button",
        {{"type", "submit"}, {"class", "danger"}, {"aria-label", "End the sign-in of " + name}},
        "End");
    const Markup content = Markup::element("input", {{"type", "hidden"},
                                                     {"name", "signIn"},
                                                     {"value", std::to_string(signIn.familyId)}}) +
                           end;
    return Markup::element("li", {}, text + postForm(kEndSignInForm, token, content));
}

} // namespace

std::string browserName(const std::string& agent) {
    const std::string_view browser = nameIn(agent, kBrowserMarks);
    const std::string_view system = nameIn(agent, kSystemMarks);
    std::string name(browser.empty() ? "A browser" : browser);
    if (!system.empty()) name += " on " + std::string(system);
    return name;
}

Markup signInRows(const std::vector<SignIn>& signIns, std::int64_t ownFamily,
                  const std::string& token) {
    Markup rows;
    for (const SignIn& signIn : signIns)
        rows += rowOf(signIn, signIn.familyId == ownFamily, token);
    return Markup::element("ul", {{"class", "rows"}}, rows);
}

} // namespace vorq::gateway
