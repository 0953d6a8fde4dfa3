#include "platform/linux/AtSpiSelection.h"

#include <algorithm>
#include <array>

namespace vorq {
namespace {

using atspi::Role;

constexpr QChar objectCharacter(u'\uFFFC');
constexpr std::int32_t longestText = 4 * 1024 * 1024; // in the toolkit's units
constexpr std::int32_t mostSelections = 64;

constexpr std::array inlineRoles{Role::Link, Role::Static, Role::Label, Role::Image};

bool isInline(const std::optional<std::uint32_t>& role) {
    return std::ranges::any_of(
        inlineRoles, [&](Role known) { return role == static_cast<std::uint32_t>(known); });
}

bool isPasswordRole(const std::optional<std::uint32_t>& role) {
    return role == static_cast<std::uint32_t>(Role::PasswordText);
}

// Puts pieces together; a block begins and ends a line.
class Lines {
  public:
    void add(QStringView piece) {
        if (piece.isEmpty()) return;
        if (m_breakIsDue && !m_text.isEmpty() && !m_text.endsWith(u'\n')) m_text += u'\n';
        m_breakIsDue = false;
        m_text += piece;
    }
    void addBlock(QStringView piece) {
        m_breakIsDue = true;
        add(piece);
        m_breakIsDue = true;
    }
    [[nodiscard]] const QString& text() const { return m_text; }

  private:
    QString m_text;
    bool m_breakIsDue = false;
};

} // namespace

// Keeps a page that contains itself, or is endless, from being read for ever.
struct AtSpiSelection::Reading {
    int depth = 0;
    std::size_t objects = 2000;
};

std::optional<std::vector<AtSpiSelection::Span>>
AtSpiSelection::spans(const AtSpiRef& element) const {
    const AtSpiBus::Messages replies =
        m_bus.call({atspi::role(element), atspi::selectionCount(element)}, m_stop);
    const auto count = atspi::integerIn(replies[1]);
    if (!count) return std::nullopt;
    if (isPasswordRole(atspi::numberIn(replies[0]))) return std::vector<Span>();
    std::vector<Span> spans = spansOf(element, *count);
    if (m_toolkit.splitsParagraphs && !spans.empty() && hasSelectedSibling(element))
        return std::nullopt;
    return spans;
}

bool AtSpiSelection::hasSelectedSibling(const AtSpiRef& element) const {
    const auto parent = atspi::propertyRefIn(m_bus.call(atspi::parent(element), m_stop));
    if (!parent) return false;
    const auto siblings = atspi::refsIn(m_bus.call(atspi::children(*parent), m_stop));
    AtSpiBus::Messages calls;
    for (const AtSpiRef& sibling : siblings.value_or(std::vector<AtSpiRef>()))
        if (sibling != element) calls.push_back(atspi::selectionCount(sibling));
    return std::ranges::any_of(m_bus.call(calls, m_stop), [](const QDBusMessage& reply) {
        return atspi::integerIn(reply).value_or(0) > 0;
    });
}

std::vector<AtSpiSelection::Span> AtSpiSelection::spansOf(const AtSpiRef& element,
                                                          std::int32_t count) const {
    AtSpiBus::Messages calls;
    for (std::int32_t i = 0; i < std::min(count, mostSelections); ++i)
        calls.push_back(atspi::selection(element, i));
    std::vector<Span> spans;
    for (const QDBusMessage& reply : m_bus.call(calls, m_stop))
        if (const auto span = atspi::spanIn(reply); span && span->start < span->end)
            spans.push_back(*span);
    return spans;
}

std::optional<QString> AtSpiSelection::selectedText(const AtSpiRef& element) const {
    const auto selected = spans(element);
    if (!selected) return std::nullopt;
    Reading reading;
    Lines lines;
    for (const Span& span : *selected)
        lines.addBlock(composed(element, span, reading));
    return m_stop.stop_requested() ? std::nullopt : std::optional(lines.text());
}

std::optional<QString> AtSpiSelection::plainText(const AtSpiRef& element, Span span) const {
    if (isPassword(element)) return std::nullopt;
    const auto raw = rawText(element, span);
    return raw ? std::optional(withoutMarks(*raw, m_toolkit)) : std::nullopt;
}

std::optional<QString> AtSpiSelection::value(const AtSpiRef& element) const {
    const auto count = atspi::propertyIntegerIn(m_bus.call(atspi::characterCount(element), m_stop));
    if (!count) return std::nullopt;
    return plainText(element, {.start = 0, .end = *count});
}

bool AtSpiSelection::isPassword(const AtSpiRef& element) const {
    const auto role = atspi::numberIn(m_bus.call(atspi::role(element), m_stop));
    return !role || isPasswordRole(role);
}

std::optional<QString> AtSpiSelection::rawText(const AtSpiRef& element, Span span) const {
    if (span.end - span.start > longestText) return std::nullopt;
    return atspi::textIn(m_bus.call(atspi::text(element, span.start, span.end), m_stop));
}

QString AtSpiSelection::composed(const AtSpiRef& element, Span span, Reading& reading) const {
    const QString raw = rawText(element, span).value_or(QString());
    const std::vector<std::int32_t> offsets = objectOffsets(raw, span.start);
    if (offsets.empty() || reading.depth > 24 || offsets.size() > reading.objects)
        return withoutMarks(raw, m_toolkit);
    reading.objects -= offsets.size();
    ++reading.depth;
    const auto objects = objectsAt(element, offsets);
    Lines lines;
    qsizetype from = 0;
    for (const auto& object : objects) {
        const qsizetype at = raw.indexOf(objectCharacter, from);
        lines.add(withoutMarks(raw.sliced(from, at - from), m_toolkit));
        from = at + 1;
        if (!object) continue;
        const bool isAtEdge = at == 0 || at == raw.size() - 1;
        const QString text = textOf(*object, isAtEdge, reading);
        if (isInline(object->role))
            lines.add(text);
        else
            lines.addBlock(text);
    }
    lines.add(withoutMarks(raw.sliced(from), m_toolkit));
    --reading.depth;
    return lines.text();
}

std::vector<std::int32_t> AtSpiSelection::objectOffsets(QStringView raw, std::int32_t start) const {
    // With its marks, a text counts characters.
    const bool countsUnits =
        m_toolkit.unit == AtSpiToolkit::Unit::Utf16 && !m_toolkit.marksWideCharacters;
    std::vector<std::int32_t> offsets;
    std::int32_t offset = start;
    for (qsizetype i = 0; i < raw.size(); ++i) {
        if (raw[i] == objectCharacter) offsets.push_back(offset);
        const bool isSecondHalf = i > 0 && raw[i].isLowSurrogate() && raw[i - 1].isHighSurrogate();
        if (countsUnits || !isSecondHalf) ++offset;
    }
    return offsets;
}

std::vector<std::optional<AtSpiSelection::Object>>
AtSpiSelection::objectsAt(const AtSpiRef& element, const std::vector<std::int32_t>& offsets) const {
    AtSpiBus::Messages calls;
    for (const std::int32_t offset : offsets)
        calls.push_back(atspi::linkIndex(element, offset));
    const AtSpiBus::Messages indices = m_bus.call(calls, m_stop);
    for (std::size_t i = 0; i < calls.size(); ++i)
        calls[i] = atspi::link(element, atspi::integerIn(indices[i]).value_or(-1));
    const AtSpiBus::Messages links = m_bus.call(calls, m_stop);
    const AtSpiRef nowhere = {element.service, QStringLiteral("/org/a11y/atspi/null")};
    for (std::size_t i = 0; i < calls.size(); ++i)
        calls[i] = atspi::linkedObject(atspi::refIn(links[i]).value_or(nowhere));
    const AtSpiBus::Messages linked = m_bus.call(calls, m_stop);
    calls.clear();
    for (const QDBusMessage& reply : linked) {
        const AtSpiRef ref = atspi::refIn(reply).value_or(nowhere);
        calls.push_back(atspi::role(ref));
        calls.push_back(atspi::selectionCount(ref));
    }
    const AtSpiBus::Messages facts = m_bus.call(calls, m_stop);
    std::vector<std::optional<Object>> objects;
    for (std::size_t i = 0; i < linked.size(); ++i) {
        const auto ref = atspi::refIn(linked[i]);
        objects.push_back(
            ref ? std::optional(Object{.element = *ref,
                                       .role = atspi::numberIn(facts[2 * i]),
                                       .selections = atspi::integerIn(facts[2 * i + 1])})
                : std::nullopt);
    }
    return objects;
}

QString AtSpiSelection::textOf(const Object& object, bool isAtEdge, Reading& reading) const {
    if (!object.selections || !object.role || isPasswordRole(object.role)) return {};
    Lines lines;
    for (const Span& span : spansOf(object.element, *object.selections))
        lines.addBlock(composed(object.element, span, reading));
    // Within a selection, an object that tells of no part of it is selected as a whole; at its end
    // the selection may merely touch it.
    if (*object.selections > 0 || isAtEdge) return lines.text();
    const auto count =
        atspi::propertyIntegerIn(m_bus.call(atspi::characterCount(object.element), m_stop));
    return composed(object.element, {.start = 0, .end = count.value_or(0)}, reading);
}

} // namespace vorq
