#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// One word of a sentence: where it stands and the form under which it is counted.
struct Word {
    std::size_t offset = 0;
    std::size_t length = 0;
    /// Lower-cased, without the commonest endings, so that "store", "stores" and "stored" meet.
    std::string key;
    /// Carries content: no stop word, no bare number, not too short.
    bool isContent = false;
    bool isNumber = false;
    bool isCapitalised = false;
    /// Nothing but blanks stands between it and the word before.
    bool followsDirectly = false;
};

/// The words of `text`, which must be valid UTF-8. Runs of Chinese and Japanese characters, which
/// are written without blanks, become words of one script and at most four characters.
[[nodiscard]] std::vector<Word> wordsOf(std::string_view text);

} // namespace vorq::gateway
