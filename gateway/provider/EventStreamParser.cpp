#include "provider/EventStreamParser.h"

#include "provider/ProviderError.h"
#include "support/Utf8.h"

#include <algorithm>
#include <utility>

namespace vorq::gateway {
namespace {

constexpr std::size_t kLongestEvent = std::size_t{4} * 1024 * 1024;
constexpr std::string_view kEndMark = "[DONE]";

/// No JSON has an object right behind another, so the event before is complete.
bool beginsAnotherEvent(std::string_view data, std::string_view next) {
    return trimmed(data).ends_with('}') && (next.starts_with('{') || next == kEndMark);
}

} // namespace

std::vector<StreamEvent> EventStreamParser::feed(std::string_view bytes) {
    while (!bytes.empty()) {
        if (std::exchange(isBehindReturn_, false) && bytes.front() == '\n') {
            bytes.remove_prefix(1);
            continue;
        }
        const std::size_t end = bytes.find_first_of("\r\n");
        checkSize(std::min(end, bytes.size()));
        line_ += bytes.substr(0, end);
        if (end == std::string_view::npos) break;
        isBehindReturn_ = bytes[end] == '\r';
        bytes.remove_prefix(end + 1);
        endLine();
    }
    return std::exchange(ready_, {});
}

std::vector<StreamEvent> EventStreamParser::finish() {
    if (!line_.empty()) endLine();
    dispatch();
    return std::exchange(ready_, {});
}

void EventStreamParser::checkSize(std::size_t more) const {
    if (line_.size() + event_.data.size() + more > kLongestEvent) throw tooLong();
}

void EventStreamParser::endLine() {
    const std::string whole = std::exchange(line_, {});
    std::string_view line = whole;
    if (std::exchange(isFirstLine_, false) && line.starts_with(kByteOrderMark)) {
        line.remove_prefix(kByteOrderMark.size());
    }
    if (line.empty()) {
        dispatch();
    } else if (line.starts_with(':')) {
        hasSeenField_ = true;
    } else if (line.starts_with('{')) {
        handleData(line);
    } else {
        const std::size_t colon = line.find(':');
        std::string_view value = colon == std::string_view::npos ? "" : line.substr(colon + 1);
        if (value.starts_with(' ')) value.remove_prefix(1);
        handleField(line.substr(0, colon), value);
    }
}

void EventStreamParser::handleField(std::string_view name, std::string_view value) {
    if (name == "data") {
        hasSeenField_ = true;
        handleData(value);
    } else if (name == "event") {
        hasSeenField_ = true;
        event_.name = value;
    } else if (name == "error") {
        hasSeenField_ = true;
        dispatch();
        event_.name = name;
        handleData(value);
        dispatch();
    } else if (name == "id" || name == "retry") {
        hasSeenField_ = true;
    }
}

void EventStreamParser::handleData(std::string_view value) {
    const std::string_view text = trimmed(value);
    if (hasData_ && beginsAnotherEvent(event_.data, text)) dispatch();
    if (hasData_) event_.data += '\n';
    event_.data += value;
    hasData_ = true;
    if (text == kEndMark) dispatch();
}

void EventStreamParser::dispatch() {
    if (hasData_) ready_.push_back(event_);
    event_ = {};
    hasData_ = false;
}

} // namespace vorq::gateway
