#include "platform/linux/atspi/AtSpiTextReplacement.h"

namespace vorq {

// An application that is late gets both steps in their order. Asked to delete and then left alone,
// it would have deleted for nothing.
bool AtSpiTextReplacement::replace(atspi::Span span, const QString& text,
                                   const QString& former) const {
    const QDBusMessage deleted =
        m_bus.call(atspi::deleteText(m_element, span.start, span.end), std::stop_token());
    if (!atspi::truthIn(deleted) && !atspi::isLate(deleted)) return false;
    insert(span.start, text);
    const Sight sight = look(span.start, text);
    // Nothing may be lost, and nothing be there twice.
    if (sight == Sight::Other && look(span.start, former) == Sight::Other)
        insert(span.start, former);
    return sight == Sight::There;
}

void AtSpiTextReplacement::insert(std::int32_t start, const QString& text) const {
    const auto length = m_toolkit.countsInsertedUnits ? text.size() : text.toUtf8().size();
    (void)m_bus.call(atspi::insertText(m_element, start, text, static_cast<std::int32_t>(length)),
                     std::stop_token());
}

AtSpiTextReplacement::Sight AtSpiTextReplacement::look(std::int32_t start,
                                                       const QString& expected) const {
    const auto length = toolkitOffset(expected.size(), expected, m_toolkit);
    const auto end = static_cast<std::int32_t>(start + length);
    const QDBusMessage reply = m_bus.call(atspi::text(m_element, start, end), std::stop_token());
    if (atspi::isLate(reply)) return Sight::Unknown;
    const auto there = atspi::textIn(reply);
    return there && withoutMarks(*there, m_toolkit) == expected ? Sight::There : Sight::Other;
}

} // namespace vorq
