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
        if (std::exchange(m_isBehindReturn, false) && bytes.front() == '\n') {
            bytes.remove_prefix(1);
            continue;
        }
        const std::size_t end = bytes.find_first_of("\r\n");
        checkSize(std::min(end, bytes.size()));
        m_line += bytes.substr(0, end);
        if (end == std::string_view::npos) break;
        m_isBehindReturn = bytes[end] == '\r';
        bytes.remove_prefix(end + 1);
        endLine();
    }
    return std::exchange(m_ready, {});
}

std::vector<StreamEvent> EventStreamParser::finish() {
    if (!m_line.empty()) endLine();
    dispatch();
    return std::exchange(m_ready, {});
}

void EventStreamParser::checkSize(std::size_t more) const {
    if (m_line.size() + m_event.data.size() + more > kLongestEvent) throw tooLong();
}

void EventStreamParser::endLine() {
    const std::string whole = std::exchange(m_line, {});
    std::string_view line = whole;
    if (std::exchange(m_isFirstLine, false) && line.starts_with(kByteOrderMark)) {
        line.remove_prefix(kByteOrderMark.size());
    }
    if (line.empty()) {
        dispatch();
    } else if (line.starts_with(':')) {
        m_hasSeenField = true;
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
        m_hasSeenField = true;
        handleData(value);
    } else if (name == "event") {
        m_hasSeenField = true;
        m_event.name = value;
    } else if (name == "error") {
        m_hasSeenField = true;
        dispatch();
        m_event.name = name;
        handleData(value);
        dispatch();
    } else if (name == "id" || name == "retry") {
        m_hasSeenField = true;
    }
}

void EventStreamParser::handleData(std::string_view value) {
    const std::string_view text = trimmed(value);
    if (m_hasData && beginsAnotherEvent(m_event.data, text)) dispatch();
    if (m_hasData) m_event.data += '\n';
    m_event.data += value;
    m_hasData = true;
    if (text == kEndMark) dispatch();
}

void EventStreamParser::dispatch() {
    if (m_hasData) m_ready.push_back(m_event);
    m_event = {};
    m_hasData = false;
}

} // namespace vorq::gateway
