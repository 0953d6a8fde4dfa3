#include "pages/PageFrame.h"

namespace vorq::gateway {
namespace {

Markup headOf(const PageFrame& frame) {
    Markup head = Markup::literal(
        R"(<meta charset="utf-8"><meta name="viewport" content="width=device-width, initial-scale=1"><meta name="color-scheme" content="dark light"><link rel="icon" type="image/svg+xml" href="/pages/mark.svg"><link rel="stylesheet" href="/pages/style.css">)");
    if (!frame.next.empty()) {
        head += Markup::element("meta",
                                {{"http-equiv", "refresh"}, {"content", "0; url=" + frame.next}});
    }
    return Markup::element("title", {}, frame.title + " – Vorq") + head;
}

Markup headerOf(const PageFrame& frame) {
    Markup header = Markup::literal(
        R"(<span class="brand"><img src="/pages/mark.svg" alt="" width="28" height="28">Vorq</span>)");
    if (!frame.navigation.isEmpty())
        header += Markup::element("nav", {{"aria-label", "Account"}}, frame.navigation);
    return Markup::element("header", {}, header);
}

Markup sentenceIn(const char* kind, const char* role, const std::string& sentence) {
    if (sentence.empty()) return {};
    return Markup::element("p", {{"class", kind}, {"role", role}}, sentence);
}

} // namespace

std::string documentOf(const PageFrame& frame) {
    const Markup body = headerOf(frame) + Markup::element("main", {}, frame.main);
    const Attributes kind = {{"class", frame.isWide ? "wide" : "narrow"}};
    const Markup document = Markup::element("html", {{"lang", "en"}},
                                            Markup::element("head", {}, headOf(frame)) +
                                                Markup::element("body", kind, body));
    return "<!DOCTYPE html>\n" + document.html() + "\n";
}

Markup notice(const std::string& sentence) {
    return sentenceIn("notice good", "status", sentence);
}

Markup problemNotice(const std::string& sentence) {
    return sentenceIn("notice bad", "alert", sentence);
}

Markup link(const std::string& address, const Markup& content) {
    return Markup::element("a", {{"href", address}}, content);
}

} // namespace vorq::gateway
