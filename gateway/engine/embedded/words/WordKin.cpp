#include "engine/embedded/words/WordKin.h"

#include "engine/embedded/words/Lexicon.h"
#include "engine/embedded/words/PhraseList.h"
#include "engine/embedded/words/Words.h"
#include "support/Utf8.h"

#include <algorithm>
#include <array>
#include <memory>
#include <mutex>

namespace vorq::gateway {
namespace {

constexpr std::size_t kShortestVerb = 3; // characters that stay when a prefix goes

std::vector<std::string> keysIn(std::string_view group, WordReader& reader) {
    std::vector<std::string> keys;
    reader.begin(group);
    for (FoundWord word; reader.next(word);) {
        if (std::ranges::find(keys, word.key) == keys.end()) keys.push_back(word.key);
    }
    return keys;
}

} // namespace

WordKin::WordKin(Language language) {
    const LanguageData& data = dataOf(language);
    WordReader reader(language);
    readForms(data.forms, reader);
    readSynonyms(data.synonyms, reader);
    anyPhrase(data.separable, [&](std::string_view prefix) {
        if (!prefix.empty()) m_prefixes.push_back(prefix);
        return false;
    });
}

const std::vector<WordKin::Relative>& WordKin::of(std::string_view key) const {
    static const std::vector<Relative> none;
    const auto found = m_relatives.find(std::string(key));
    return found == m_relatives.end() ? none : found->second;
}

std::string_view WordKin::withoutPrefix(std::string_view key) const {
    std::string_view rest = key;
    const auto prefix = std::ranges::find_if(
        m_prefixes, [&](std::string_view candidate) { return key.starts_with(candidate); });
    if (prefix != m_prefixes.end()) rest.remove_prefix(prefix->size());
    const bool isParticiple = !m_prefixes.empty() && rest.starts_with("ge");
    if (isParticiple && characterCount(rest) >= kShortestVerb + 2) rest.remove_prefix(2);
    return characterCount(rest) < kShortestVerb ? key : rest;
}

void WordKin::relate(const std::string& key, const std::string& relative, bool isForm) {
    if (key == relative) return;
    std::vector<Relative>& known = m_relatives[key];
    if (std::ranges::find(known, relative, &Relative::key) != known.end()) return;
    known.push_back({.key = relative, .isForm = isForm});
}

void WordKin::readForms(std::string_view groups, WordReader& reader) {
    anyPhrase(groups, [&](std::string_view group) {
        const std::vector<std::string> keys = keysIn(group, reader);
        for (const std::string& key : keys) {
            for (const std::string& other : keys)
                relate(key, other, true);
        }
        return false;
    });
}

/// Each form of one word is a synonym of each form of the other.
void WordKin::readSynonyms(std::string_view groups, WordReader& reader) {
    anyPhrase(groups, [&](std::string_view group) {
        std::vector<std::string> keys = keysIn(group, reader);
        for (std::size_t i = 0, count = keys.size(); i < count; ++i) {
            for (const Relative& relative : of(keys[i])) {
                if (relative.isForm) keys.push_back(relative.key);
            }
        }
        for (const std::string& key : keys) {
            for (const std::string& other : keys)
                relate(key, other, false);
        }
        return false;
    });
}

const WordKin& kinOf(Language language) {
    constexpr std::size_t count = static_cast<std::size_t>(Language::Other) + 1;
    // No once_flag: where memory is short, what is thrown through its C code ends the process.
    struct Entry {
        std::mutex isReading;
        std::unique_ptr<WordKin> kin;
    };
    static std::array<Entry, count> entries;
    Entry& entry = entries[static_cast<std::size_t>(language)];
    const std::scoped_lock lock(entry.isReading);
    if (!entry.kin) entry.kin = std::make_unique<WordKin>(language);
    return *entry.kin;
}

} // namespace vorq::gateway
