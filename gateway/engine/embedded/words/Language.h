#pragma once

#include <string_view>

namespace vorq::gateway {

/// The languages whose grammar the engine knows something of.
enum class Language {
    English,
    German,
    French,
    Spanish,
    Portuguese,
    Italian,
    Dutch,
    Russian,
    Arabic,
    Chinese,
    Japanese,
    /// Any other: sentences and words as far as they go by rules for all.
    Other,
};

/// The language that most of `text` is written in, which must be valid UTF-8. Looks at the first
/// part of a long text only. English where too little is written to tell.
[[nodiscard]] Language languageOf(std::string_view text);

/// The language that a short request is put in. One word decides little, so that `likely`, the
/// language of the text that it is about, wins unless the request has more words of another.
[[nodiscard]] Language languageOfRequest(std::string_view request, Language likely);

} // namespace vorq::gateway
