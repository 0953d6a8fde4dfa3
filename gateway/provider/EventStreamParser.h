#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vorq::gateway {

/// Some servers begin their answer with one.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// One server-sent event. A field "error", which some servers send in place of an event of that
/// name, is one too.
struct StreamEvent {
    /// Empty unless the stream names it.
    std::string name;
    std::string data;

    bool operator==(const StreamEvent&) const = default;
};

/// Splits the bytes of an event stream, cut anywhere, into events. Lines end in CR, LF or both; a
/// byte order mark, comments and unknown fields are passed over. Providers that leave out the
/// blank line between two JSON objects, or "data:" before one, are understood. Throws EngineError
/// for an event of more than 4 MB.
class EventStreamParser {
  public:
    /// The events that these bytes complete.
    [[nodiscard]] std::vector<StreamEvent> feed(std::string_view bytes);
    /// The stream ended: the events that only lack their end.
    [[nodiscard]] std::vector<StreamEvent> finish();

    /// Whether any line so far belongs in an event stream.
    [[nodiscard]] bool hasSeenField() const { return m_hasSeenField; }

  private:
    void endLine();
    void handleField(std::string_view name, std::string_view value);
    void handleData(std::string_view value);
    void dispatch();
    void checkSize(std::size_t more) const;

    std::vector<StreamEvent> m_ready;
    StreamEvent m_event;
    std::string m_line;
    bool m_hasData = false;
    bool m_hasSeenField = false;
    bool m_isFirstLine = true;
    bool m_isBehindReturn = false;
};

} // namespace vorq::gateway
