#include "provider/LenientJson.h"

#include "provider/LenientText.h"
#include "support/Utf8.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace vorq::gateway {
namespace {

using nlohmann::json;

constexpr int kDeepestValue = 64;
// Each costs a pass over the text.
constexpr int kMostFailures = 64;
constexpr std::size_t kLongestKey = 200;
constexpr std::string_view kSpaces = " \t\r\n";
constexpr std::string_view kFence = "```";
constexpr std::array<std::string_view, 5> kStringQuotes = {"\"", "'", "“", "”", "„"};

enum class Place { Key, Member, Item };

bool isKeyCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-';
}

/// Reads one value that begins with a bracket.
class ValueReader {
  public:
    ValueReader(std::string_view text, std::size_t at) : text_(text), at_(at) {}

    /// Nothing for what turns out to be no JSON.
    std::optional<json> read() {
        json result = value(Place::Item);
        return hasFailed_ ? std::nullopt : std::optional(std::move(result));
    }
    [[nodiscard]] std::size_t end() const { return at_; }
    [[nodiscard]] bool wasCut() const { return wasCut_; }
    [[nodiscard]] bool endedInText() const { return endedInText_; }

  private:
    [[nodiscard]] bool isAtEnd() const { return at_ >= text_.size(); }
    [[nodiscard]] bool isAt(std::string_view mark) const {
        return text_.substr(std::min(at_, text_.size())).starts_with(mark);
    }
    [[nodiscard]] char charAt(std::size_t at) const { return at < text_.size() ? text_[at] : '\0'; }
    [[nodiscard]] std::size_t behindSpaces(std::size_t at) const {
        return std::min(text_.find_first_not_of(kSpaces, at), text_.size());
    }
    /// The length of the quote at a place; 0 if there is none.
    [[nodiscard]] std::size_t quoteAt(std::size_t at) const {
        const std::string_view rest = text_.substr(std::min(at, text_.size()));
        const auto quote = std::ranges::find_if(
            kStringQuotes, [rest](std::string_view mark) { return rest.starts_with(mark); });
        return quote == kStringQuotes.end() ? 0 : quote->size();
    }

    void skipComment() {
        const bool isLong = isAt("/*");
        const std::size_t end = isLong ? text_.find("*/", at_ + 2) : text_.find('\n', at_);
        at_ = end == std::string_view::npos ? text_.size() : end + (isLong ? 2 : 1);
    }
    void skipSpaces() {
        at_ = behindSpaces(at_);
        while (isAt("//") || isAt("/*") || isAt("#")) {
            skipComment();
            at_ = behindSpaces(at_);
        }
    }
    void skipSeparators() {
        skipSpaces();
        while (isAt(",")) {
            ++at_;
            skipSpaces();
        }
    }

    json value(Place place) {
        skipSpaces();
        if (isAtEnd()) {
            wasCut_ = true;
            return nullptr;
        }
        if (isAt("{") || isAt("[")) {
            if (openObjects_ + openArrays_ == kDeepestValue) {
                hasFailed_ = true;
                return nullptr;
            }
            return isAt("{") ? object() : array();
        }
        if (quoteAt(at_) > 0) return string(place);
        return bare();
    }

    json array() {
        json list = json::array();
        ++at_;
        ++openArrays_;
        while (!hasFailed_) {
            skipSeparators();
            if (isAtEnd()) wasCut_ = true;
            if (wasCut_ || (isAt("}") && openObjects_ > 0)) break;
            const char first = text_[at_];
            if (first == ']' || first == '}' || first == ':') ++at_;
            if (first == ']') break;
            if (first == '}' || first == ':') continue;
            json item = value(Place::Item);
            if (!wasCut_) list.push_back(std::move(item));
        }
        --openArrays_;
        return list;
    }

    json object() {
        json members = json::object();
        ++at_;
        ++openObjects_;
        while (!hasFailed_) {
            skipSeparators();
            if (isAtEnd() || isAt(kFence)) wasCut_ = true;
            if (wasCut_ || (isAt("]") && openArrays_ > 0)) break;
            const char first = text_[at_];
            if (first == '}' || first == ']') ++at_;
            if (first == '}') break;
            if (first == ']') continue;
            member(members);
        }
        --openObjects_;
        return members;
    }

    void member(json& members) {
        const std::optional<std::string> name = key();
        if (wasCut_) return;
        if (!name || !passColon()) {
            giveUp(members);
            return;
        }
        json found = value(Place::Member);
        if (!wasCut_ || !found.is_null()) members[*name] = std::move(found);
    }

    /// What was read so far counts; from here on nothing can be told apart.
    void giveUp(const json& members) {
        hasFailed_ = hasFailed_ || members.empty();
        wasCut_ = true;
        at_ = text_.size();
    }

    std::optional<std::string> key() {
        if (quoteAt(at_) > 0) return string(Place::Key);
        const std::size_t start = at_;
        while (isKeyCharacter(charAt(at_)))
            ++at_;
        if (at_ == start) return std::nullopt;
        hasBareKeys_ = true;
        return std::string(text_.substr(start, at_ - start));
    }

    bool passColon() {
        skipSpaces();
        if (isAtEnd()) {
            wasCut_ = true;
            return true;
        }
        for (const std::string_view mark : {":", "=>", "="}) {
            if (!isAt(mark)) continue;
            at_ += mark.size();
            return true;
        }
        return false;
    }

    std::string string(Place place) {
        const std::size_t length = quoteAt(at_);
        const std::string_view open = text_.substr(at_, length);
        at_ += length;
        std::string out;
        while (!isAtEnd()) {
            const std::size_t close = closingQuote(open);
            if (close > 0 && endsString(at_ + close, place)) {
                at_ += close;
                return out;
            }
            if (text_[at_] == '\\') {
                at_ += appendUnescaped(out, text_.substr(at_));
            } else {
                out += text_[at_++];
            }
        }
        wasCut_ = true;
        const std::size_t fence = out.rfind('\n');
        endedInText_ = fence == std::string::npos || trimmed(out.substr(fence)) != kFence;
        if (!endedInText_) out.erase(fence);
        return out;
    }

    /// The length of a quote at this place that goes with the opening one; 0 if there is none.
    [[nodiscard]] std::size_t closingQuote(std::string_view open) const {
        if (open.size() == 1) return text_[at_] == open.front() ? 1 : 0;
        return text_[at_] == '\'' ? 0 : quoteAt(at_);
    }

    /// Whether a string may end where this follows its quote, or the quote belongs to the text.
    [[nodiscard]] bool endsString(std::size_t behind, Place place) const {
        if (place == Place::Key) return true;
        const std::size_t next = behindSpaces(behind);
        const std::string_view rest = text_.substr(next);
        if (rest.empty() || rest.starts_with(kFence) || rest.starts_with("//") ||
            rest.starts_with("/*")) {
            return true;
        }
        if (rest.front() == '}') return openObjects_ > 0;
        if (rest.front() == ']') return openArrays_ > 0;
        if (rest.front() != ',')
            return place == Place::Member ? beginsMember(next) : next > behind && beginsItem(next);
        const std::size_t following = behindSpaces(next + 1);
        const char first = charAt(following);
        if (first == '\0' || first == '}' || first == ']' || first == '/' || first == '#') {
            return true;
        }
        return place == Place::Member ? beginsMember(following) : beginsItem(following);
    }

    /// Whether a name and a colon stand here, or as much of them as fits before the end.
    [[nodiscard]] bool beginsMember(std::size_t at) const {
        std::size_t end = at;
        if (const std::size_t quote = quoteAt(at); quote > 0) {
            const std::size_t last = std::min(at + kLongestKey, text_.size());
            for (end += quote; end < last && quoteAt(end) == 0 && text_[end] != '\n';)
                ++end;
            end += quoteAt(end);
        } else if (hasBareKeys_) {
            while (isKeyCharacter(charAt(end)))
                ++end;
        }
        const std::size_t next = behindSpaces(end);
        return end > at && (next == text_.size() || text_[next] == ':');
    }

    [[nodiscard]] bool beginsItem(std::size_t at) const {
        const char first = charAt(at);
        if (quoteAt(at) > 0 || std::string_view("{[-0123456789").contains(first)) return true;
        const std::string_view rest = text_.substr(std::min(at, text_.size()));
        const std::array literals = {"true", "false", "null", "True", "False", "None"};
        return std::ranges::any_of(
            literals, [rest](std::string_view word) { return rest.starts_with(word); });
    }

    json bare() {
        const std::size_t end = std::min(text_.find_first_of(",}]\n", at_), text_.size());
        std::string_view word = text_.substr(at_, end - at_);
        for (const std::string_view comment : {" //", " #", " /*"})
            word = word.substr(0, word.find(comment));
        at_ = end;
        wasCut_ = wasCut_ || isAtEnd();
        return bareValue(trimmed(word));
    }

    std::string_view text_;
    std::size_t at_;
    int openObjects_ = 0;
    int openArrays_ = 0;
    bool hasBareKeys_ = false;
    bool wasCut_ = false;
    bool endedInText_ = false;
    bool hasFailed_ = false;
};

} // namespace

std::optional<json> LenientJson::next() {
    wasCut_ = endedInText_ = false;
    while (failures_ < kMostFailures) {
        begin_ = text_.find_first_of("{[", at_);
        if (begin_ == std::string_view::npos) break;
        ValueReader reader(text_, begin_);
        if (std::optional<json> value = reader.read()) {
            at_ = reader.end();
            wasCut_ = reader.wasCut();
            endedInText_ = reader.endedInText();
            return value;
        }
        ++failures_;
        at_ = begin_ + 1;
    }
    at_ = text_.size();
    return std::nullopt;
}

} // namespace vorq::gateway
