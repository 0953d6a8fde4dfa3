#include "platform/linux/atspi/AtSpiSelection.h"

#include "platform/linux/atspi/AtSpiPageText.h"

#include <QStringList>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using atspi::Role;

constexpr std::int32_t longestText = 4 * 1024 * 1024; // in the toolkit's units
constexpr std::int32_t mostSelections = 64;
constexpr std::size_t deepestPage = 24;
constexpr std::int32_t toTheEnd = -1;

constexpr std::array inlineRoles{Role::Link, Role::Static, Role::Label, Role::Image};
constexpr std::array fieldTags{"input"_L1, "textarea"_L1, "select"_L1};

bool isRole(const std::optional<std::uint32_t>& told, Role role) {
    return told == static_cast<std::uint32_t>(role);
}

} // namespace

// Keeps a page that contains itself, or is endless, from being read for ever.
struct AtSpiSelection::Reading {
    // Those that are being read, each within the one before it.
    std::vector<AtSpiRef> within;
    std::size_t objects = 2000;
    // Whether some offsets are wrong.
    bool isMiscounted = false;

    [[nodiscard]] bool mayEnter(const AtSpiRef& element, std::size_t parts) const {
        return within.size() <= deepestPage && parts <= objects &&
               std::ranges::find(within, element) == within.end();
    }
};

std::vector<AtSpiSelection::Object>
AtSpiSelection::lookAt(const std::vector<AtSpiRef>& elements) const {
    AtSpiBus::Messages calls;
    for (const AtSpiRef& element : elements) {
        calls.push_back(atspi::role(element));
        calls.push_back(atspi::interfaces(element));
    }
    const AtSpiBus::Messages facts = m_bus.call(calls, m_stop);
    calls.clear();
    std::vector<Object> objects;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const QDBusMessage& interfaces = facts[2 * i + 1];
        Object& object = objects.emplace_back();
        object.element = elements[i];
        object.role = atspi::numberIn(facts[2 * i]);
        object.hasText = atspi::offersText(interfaces);
        object.hasLinks = atspi::offersLinks(interfaces);
        if (object.isReadable()) calls.push_back(atspi::selectionCount(elements[i]));
    }
    const AtSpiBus::Messages counts = m_bus.call(calls, m_stop);
    std::size_t next = 0;
    for (Object& object : objects)
        if (object.isReadable()) object.selections = atspi::integerIn(counts[next++]);
    return objects;
}

// What does not tell its role may be a password.
bool AtSpiSelection::Object::isReadable() const {
    return hasText && role && !isPassword();
}

bool AtSpiSelection::Object::isPassword() const {
    return isRole(role, Role::PasswordText);
}

bool AtSpiSelection::Object::isInline() const {
    if (display.isEmpty())
        return !role ||
               std::ranges::any_of(inlineRoles, [&](Role one) { return isRole(role, one); });
    return display.startsWith(u"inline") || display.startsWith(u"ruby") || display == u"math";
}

bool AtSpiSelection::Object::isCell() const {
    return display == u"table-cell";
}

bool AtSpiSelection::Object::isParagraph() const {
    return isRole(role, Role::Paragraph) && display == u"block";
}

bool AtSpiSelection::Object::isListItem() const {
    return display == u"list-item";
}

// What is typed into a field is not of the page that it stands on, which browsers do not copy
// either. Where the selection is in the field, that has the focus and is not met on a page.
bool AtSpiSelection::Object::isField() const {
    return std::ranges::find(fieldTags, tag) != fieldTags.end();
}

std::optional<std::vector<AtSpiSelection::Span>>
AtSpiSelection::spans(const AtSpiRef& element) const {
    return spansOf(lookAt({element}).front());
}

std::optional<std::vector<AtSpiSelection::Span>>
AtSpiSelection::spansOf(const Object& object) const {
    if (object.hasText && object.isPassword()) return std::vector<Span>();
    if (!object.selections) return std::nullopt;
    std::vector<Span> spans = selectedParts(object);
    // Also where it ends before the first character of this one.
    if (m_toolkit.splitsParagraphs && isPartOfMore(object.element, spans)) return std::nullopt;
    return spans;
}

bool AtSpiSelection::isPartOfMore(const AtSpiRef& element, const std::vector<Span>& spans) const {
    const auto parent = atspi::propertyRefIn(m_bus.call(atspi::parent(element), m_stop));
    if (!parent) return false;
    const AtSpiBus::Messages facts = m_bus.call(
        {atspi::children(*parent), atspi::role(*parent), atspi::characterCount(element)}, m_stop);
    auto siblings = atspi::refsIn(facts[0]).value_or(std::vector<AtSpiRef>());
    std::erase(siblings, element);
    const bool hasSelectedSibling = std::ranges::any_of(
        lookAt(siblings), [](const Object& sibling) { return sibling.selections.value_or(0) > 0; });
    if (hasSelectedSibling || !isRole(atspi::numberIn(facts[1]), Role::TableCell))
        return hasSelectedSibling;
    // Several cells are selected whole, and are too many to ask.
    const auto count = atspi::propertyIntegerIn(facts[2]);
    return count == 0 || (!spans.empty() && spans.front().start == 0 && spans.front().end == count);
}

std::vector<AtSpiSelection::Span> AtSpiSelection::selectedParts(const Object& object) const {
    AtSpiBus::Messages calls;
    for (std::int32_t i = 0; i < std::min(object.selections.value_or(0), mostSelections); ++i)
        calls.push_back(atspi::selection(object.element, i));
    std::vector<Span> spans;
    for (const QDBusMessage& reply : m_bus.call(calls, m_stop))
        if (const auto span = atspi::spanIn(reply); span && span->start < span->end)
            spans.push_back(*span);
    return spans;
}

std::optional<QString> AtSpiSelection::selectedText(const AtSpiRef& element) const {
    const Object object = lookAt({element}).front();
    const auto selected = spansOf(object);
    if (!selected && object.selections) return selectedInShape(element);
    if (!selected) return std::nullopt;
    Reading reading;
    AtSpiPageText lines;
    for (const Span& span : *selected)
        lines.addBlock(composed(object, span, reading));
    const bool isKnown = !reading.isMiscounted && !m_stop.stop_requested();
    return isKnown ? std::optional(lines.text()) : std::nullopt;
}

// Only paragraphs that are in view are elements. A page goes on beyond that; a shape, as a box on a
// slide, does not while it lies within the view.
std::optional<QString> AtSpiSelection::selectedInShape(const AtSpiRef& paragraph) const {
    const auto shape = atspi::propertyRefIn(m_bus.call(atspi::parent(paragraph), m_stop));
    if (!shape) return std::nullopt;
    const AtSpiBus::Messages facts = m_bus.call({atspi::role(*shape), atspi::parent(*shape),
                                                 atspi::extents(*shape), atspi::children(*shape)},
                                                m_stop);
    const auto view = atspi::propertyRefIn(facts[1]);
    const auto paragraphs = atspi::refsIn(facts[3]);
    if (!isRole(atspi::numberIn(facts[0]), Role::Panel) || !view || !paragraphs)
        return std::nullopt;
    const auto place = atspi::rectIn(facts[2]);
    const auto seen = atspi::rectIn(m_bus.call(atspi::extents(*view), m_stop));
    if (!place || !seen || !seen->contains(*place)) return std::nullopt;
    QStringList lines;
    qsizetype selected = 0; // lines up to the last one with a selection
    for (const Object& one : lookAt(*paragraphs)) {
        const bool isSelected = one.selections.value_or(0) > 0;
        if (!isSelected && selected == 0) continue;
        Reading reading;
        QString line;
        for (const Span& span : selectedParts(one))
            line += composed(one, span, reading);
        lines += line;
        if (isSelected) selected = lines.size();
    }
    if (m_stop.stop_requested()) return std::nullopt;
    return lines.mid(0, selected).join(u'\n');
}

std::optional<QString> AtSpiSelection::plainText(const AtSpiRef& element, Span span) const {
    if (!lookAt({element}).front().isReadable()) return std::nullopt;
    const auto raw = rawText(element, span);
    return raw ? std::optional(withoutMarks(*raw, m_toolkit)) : std::nullopt;
}

std::optional<QString> AtSpiSelection::value(const AtSpiRef& element) const {
    if (!lookAt({element}).front().isReadable()) return std::nullopt;
    const auto count = atspi::propertyIntegerIn(m_bus.call(atspi::characterCount(element), m_stop));
    const auto raw = count ? rawText(element, {.start = 0, .end = *count}) : std::nullopt;
    return raw ? std::optional(withoutMarks(*raw, m_toolkit)) : std::nullopt;
}

std::optional<bool> AtSpiSelection::isPasswordField(const AtSpiRef& element) const {
    const auto role = atspi::numberIn(m_bus.call(atspi::role(element), m_stop));
    return role ? std::optional(isRole(role, Role::PasswordText)) : std::nullopt;
}

std::optional<QString> AtSpiSelection::rawText(const AtSpiRef& element, Span span) const {
    const std::int32_t length = span.end - span.start;
    if (length > longestText) return std::nullopt;
    if (length <= 0) return QString();
    auto text = atspi::textIn(m_bus.call(atspi::text(element, span.start, span.end), m_stop));
    // A character is two units at most, and so it is with marks.
    if (text && text->size() > qsizetype{2} * length) return std::nullopt;
    return text;
}

// The offsets may be wrong by the wide characters before them, and then too low.
bool AtSpiSelection::isMiscounted(const AtSpiRef& element) const {
    if (!m_toolkit.miscountsWideCharacters) return false;
    const auto all = atspi::textIn(m_bus.call(atspi::text(element, 0, toTheEnd), m_stop));
    return !all || hasWideCharacters(*all);
}

QString AtSpiSelection::composed(const Object& object, Span span, Reading& reading) const {
    reading.isMiscounted = reading.isMiscounted || isMiscounted(object.element);
    if (reading.isMiscounted) return {};
    const QString raw = rawText(object.element, span).value_or(QString());
    const std::vector<std::int32_t> offsets = objectOffsets(raw, span.start);
    if (offsets.empty() || !object.hasLinks || !reading.mayEnter(object.element, offsets.size()))
        return withoutMarks(raw, m_toolkit);
    reading.objects -= offsets.size();
    reading.within.push_back(object.element);
    const std::vector<Object> parts = objectsAt(object.element, offsets);
    AtSpiPageText lines;
    qsizetype from = 0;
    for (const Object& part : parts) {
        const qsizetype at = raw.indexOf(objectCharacter, from);
        lines.add(withoutMarks(raw.sliced(from, at - from), m_toolkit));
        from = at + 1;
        const bool isAtEdge = at == 0 || at == raw.size() - 1;
        const QString text = textOf(part, isAtEdge, reading);
        if (object.isListItem() && lines.isMarker()) lines.keepLine();
        if (part.isCell())
            lines.addCell(text);
        else if (part.isInline())
            lines.add(text);
        else if (part.isParagraph())
            lines.addParagraph(text);
        else
            lines.addBlock(text);
    }
    lines.add(withoutMarks(raw.sliced(from), m_toolkit));
    reading.within.pop_back();
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

std::vector<AtSpiSelection::Object>
AtSpiSelection::objectsAt(const AtSpiRef& element, const std::vector<std::int32_t>& offsets) const {
    const AtSpiRef nowhere = {element.service, u"/org/a11y/atspi/null"_s};
    AtSpiBus::Messages calls;
    for (const std::int32_t offset : offsets)
        calls.push_back(atspi::linkIndex(element, offset));
    const AtSpiBus::Messages indices = m_bus.call(calls, m_stop);
    for (std::size_t i = 0; i < calls.size(); ++i)
        calls[i] = atspi::link(element, atspi::integerIn(indices[i]).value_or(-1));
    const AtSpiBus::Messages links = m_bus.call(calls, m_stop);
    for (std::size_t i = 0; i < calls.size(); ++i)
        calls[i] = atspi::linkedObject(atspi::refIn(links[i]).value_or(nowhere));
    std::vector<AtSpiRef> refs;
    for (const QDBusMessage& reply : m_bus.call(calls, m_stop))
        refs.push_back(atspi::refIn(reply).value_or(nowhere));
    std::vector<Object> objects = lookAt(refs);
    for (std::size_t i = 0; i < calls.size(); ++i)
        calls[i] = atspi::attributes(refs[i]);
    const AtSpiBus::Messages attributes = m_bus.call(calls, m_stop);
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const QMap<QString, QString> told = atspi::attributesIn(attributes[i]);
        objects[i].display = told.value(u"display"_s);
        objects[i].tag = told.value(u"tag"_s);
    }
    return objects;
}

QString AtSpiSelection::textOf(const Object& object, bool isAtEdge, Reading& reading) const {
    if (!object.selections || object.isField()) return {};
    AtSpiPageText lines;
    for (const Span& span : selectedParts(object))
        lines.addBlock(composed(object, span, reading));
    // Within a selection, an object that tells of no part of it is selected as a whole; at its end
    // the selection may merely touch it.
    if (*object.selections > 0 || isAtEdge) return lines.text();
    const auto count =
        atspi::propertyIntegerIn(m_bus.call(atspi::characterCount(object.element), m_stop));
    return composed(object, {.start = 0, .end = count.value_or(0)}, reading);
}

} // namespace vorq
