#pragma once

#include "pages/Markup.h"

#include <string>

namespace vorq::gateway {

struct PageFrame {
    std::string title;
    /// Everything of the page's own, from its first heading on.
    Markup main;
    /// Links of whoever is signed in; empty for none.
    Markup navigation = {};
    bool isWide = false;
    /// Where to go on to by itself; empty for nowhere.
    std::string next = {};
};

/// The whole document.
[[nodiscard]] std::string documentOf(const PageFrame& frame);

/// A sentence about what was just done, or what went wrong. Empty for an empty sentence.
[[nodiscard]] Markup notice(const std::string& sentence);
[[nodiscard]] Markup problemNotice(const std::string& sentence);

[[nodiscard]] Markup link(const std::string& address, const Markup& content);

/// Paths of the files that every page asks for.
inline constexpr const char* kStylePath = "/pages/style.css";
inline constexpr const char* kMarkPath = "/pages/mark.svg";
[[nodiscard]] std::string styleSheet();
[[nodiscard]] std::string markPicture();

} // namespace vorq::gateway
