#include "platform/linux/atspi/AtSpiElement.h"

#include "platform/linux/atspi/AtSpiSelectedPieces.h"
#include "platform/linux/atspi/AtSpiTextReplacement.h"

#include <limits>

namespace vorq {
namespace {

std::int32_t toInt32(std::int64_t number) {
    return static_cast<std::int32_t>(number);
}

bool isWithin(TextRange range, QStringView text) {
    return range.location >= 0 && range.length >= 0 && range.location <= text.size() &&
           range.length <= text.size() - range.location;
}

} // namespace

AtSpiElement::AtSpiElement(std::shared_ptr<Session> session, AtSpiRef element, bool isOfWalk)
    : m_session(std::move(session)), m_element(std::move(element)), m_isOfWalk(isOfWalk) {}

AtSpiToolkit AtSpiElement::toolkit() const {
    return m_session->applications.toolkitOf(m_element.service, stop());
}

AtSpiSelection AtSpiElement::selection() const {
    return {bus(), toolkit(), stop()};
}

bool AtSpiElement::isKnownWithoutSelection() const {
    return m_isOfWalk && m_session->walk.facts(m_element).selections.value_or(0) <= 0;
}

std::optional<QString> AtSpiElement::selectedText() const {
    if (isKnownWithoutSelection()) return std::nullopt;
    return selection().selectedText(m_element);
}

std::optional<TextRange> AtSpiElement::selectedTextRange() const {
    if (isKnownWithoutSelection()) return std::nullopt;
    const AtSpiToolkit kind = toolkit();
    const auto spans = AtSpiSelection(bus(), kind, stop()).spans(m_element);
    if (!spans) return std::nullopt;
    if (spans->empty()) return kind.tellsAllSelections ? caret() : std::nullopt;
    // Offsets that are wrong for the text are wrong for its range.
    if (kind.miscountsWideCharacters && !selection().selectedText(m_element)) return std::nullopt;
    const Span span = spans->front();
    if (kind.unit == AtSpiToolkit::Unit::Utf16)
        return TextRange{.location = span.start, .length = span.end - span.start};
    const auto before = selection().plainText(m_element, {.start = 0, .end = span.end});
    if (!before) return std::nullopt;
    const std::int64_t start = utf16Offset(span.start, *before, kind);
    return TextRange{.location = start, .length = utf16Offset(span.end, *before, kind) - start};
}

// An empty range says that nothing is selected. Where it is does not matter much, so the caret's
// place in a password, or one that needs the text before it, is not asked for.
std::optional<TextRange> AtSpiElement::caret() const {
    const AtSpiToolkit kind = toolkit();
    TextRange range;
    const auto offset = atspi::propertyIntegerIn(bus().call(atspi::caretOffset(m_element), stop()));
    if (!offset || *offset <= 0) return range;
    if (kind.unit == AtSpiToolkit::Unit::Utf16) {
        range.location = *offset;
        return range;
    }
    const auto before = selection().plainText(m_element, {.start = 0, .end = *offset});
    range.location = before ? before->size() : 0;
    return range;
}

std::optional<QString> AtSpiElement::value() const {
    auto text = selection().value(m_element);
    // A page is a text of objects. A piece of that says nothing.
    if (text && text->contains(objectCharacter)) return std::nullopt;
    return text;
}

std::optional<bool> AtSpiElement::isPasswordField() const {
    return selection().isPasswordField(m_element);
}

AtSpiPlaces AtSpiElement::places() const {
    return {bus(), toolkit(), stop(), m_session->patience};
}

std::optional<QRectF> AtSpiElement::onScreen(std::optional<QRectF> rect) const {
    if (!rect) return std::nullopt;
    findPlace();
    if (!m_session->place) return std::nullopt;
    const QRectF pixels = m_session->place->pixelsOf(rect->translated(m_session->shift));
    return pointsOf(pixels, m_session->screens);
}

// Every toolkit has a scale of its own, which it does not tell: its window shows it.
void AtSpiElement::findPlace() const {
    Session& session = *m_session;
    if (session.placed == m_element.service) return;
    session.placed = m_element.service;
    session.shift = places().shift(m_element);
    const auto process = session.applications.processOf(m_element.service, stop());
    const auto contents = process ? session.windows.contentsOf(*process) : std::nullopt;
    const auto window = session.applications.activeWindow(m_element.service, stop());
    const auto told =
        window ? atspi::rectIn(bus().call(atspi::extents(*window), stop())) : std::nullopt;
    const ToolkitPlace place =
        contents && told ? toolkitPlace(QRectF(*contents), *told) : ToolkitPlace();
    session.place = place;
    if (toolkit().placesInWindow) {
        session.place.reset();
        if (contents)
            session.place = ToolkitPlace{.scale = place.scale, .pixels = contents->topLeft()};
    } else if (place.scale != 1 && places().isInPixels(m_element)) {
        session.place = ToolkitPlace();
    }
}

std::optional<QRectF> AtSpiElement::frame() const {
    return onScreen(places().frame(m_element));
}

std::optional<QPointF> AtSpiElement::position() const {
    const auto rect = frame();
    return rect ? std::optional(rect->topLeft()) : std::nullopt;
}

std::optional<QSizeF> AtSpiElement::size() const {
    const auto rect = frame();
    return rect ? std::optional(rect->size()) : std::nullopt;
}

std::optional<std::vector<AccessibleElementPtr>> AtSpiElement::children() const {
    const AtSpiWalk::Facts& facts = m_session->walk.facts(m_element);
    // Below a selection that cannot be read, nothing has all of it.
    const bool hasSelection = facts.selections.value_or(0) > 0;
    if (!facts.children || (hasSelection && toolkit().miscountsWideCharacters)) return std::nullopt;
    // Announcing changes what facts refers to.
    const std::vector<AtSpiRef> children = *facts.children;
    std::vector<AccessibleElementPtr> elements;
    for (const AtSpiRef& child : children) {
        m_session->walk.announce(child);
        elements.push_back(std::make_shared<AtSpiElement>(m_session, child, true));
    }
    return elements;
}

std::optional<AtSpiElement::Span> AtSpiElement::spanOf(TextRange range, QStringView text) const {
    if (!isWithin(range, text)) return std::nullopt;
    const AtSpiToolkit kind = toolkit();
    return Span{.start = toInt32(toolkitOffset(range.location, text, kind)),
                .end = toInt32(toolkitOffset(range.location + range.length, text, kind))};
}

std::optional<QRectF> AtSpiElement::boundsForRange(TextRange range) const {
    if (!m_boundsText) m_boundsText = selection().value(m_element);
    if (!m_boundsText || !tellsBounds()) return std::nullopt;
    const auto span = spanOf(range, *m_boundsText);
    return span ? onScreen(places().bounds(m_element, *span)) : std::nullopt;
}

// Objects are told as wholes, however little of them is selected.
bool AtSpiElement::tellsBounds() const {
    if (m_tellsBounds) return *m_tellsBounds;
    bool isOfObjects = false;
    if (m_boundsText->contains(objectCharacter)) {
        for (const Span& span : selection().spans(m_element).value_or(std::vector<Span>())) {
            const auto selected = selection().plainText(m_element, span);
            isOfObjects = isOfObjects || !selected || selected->contains(objectCharacter);
        }
    }
    m_tellsBounds = !isOfObjects && !places().misplacesParagraphs(m_element, *m_boundsText);
    return *m_tellsBounds;
}

std::optional<QRectF> AtSpiElement::selectedTextMarkerBounds() const {
    if (!m_boundsText) m_boundsText = selection().value(m_element);
    if (!m_boundsText || places().misplacesParagraphs(m_element, *m_boundsText))
        return std::nullopt;
    const AtSpiSelection selected = selection();
    // Offsets that are wrong for the text are wrong for its place.
    if (toolkit().miscountsWideCharacters && !selected.selectedText(m_element)) return std::nullopt;
    std::optional<QRectF> bounds;
    for (const auto& [element, span] : AtSpiSelectedPieces(selected).of(m_element)) {
        const auto piece = places().bounds(element, span);
        if (piece) bounds = bounds ? bounds->united(*piece) : *piece;
    }
    return onScreen(bounds);
}

bool AtSpiElement::setSelectedTextRange(TextRange range) {
    const auto text = selection().value(m_element);
    const auto span = text ? spanOf(range, *text) : std::nullopt;
    if (!span) return false;
    const auto isSet = [&] {
        const auto spans = selection().spans(m_element);
        return spans && !spans->empty() && spans->front().start == span->start &&
               spans->front().end == span->end;
    };
    // What toolkits answer to these says little: what is selected afterwards counts.
    (void)bus().call(atspi::setSelection(m_element, span->start, span->end), stop());
    if (isSet()) return true;
    (void)bus().call(atspi::addSelection(m_element, span->start, span->end), stop());
    return isSet();
}

bool AtSpiElement::setSelectedText(const QString& text) {
    const auto spans = selection().spans(m_element);
    if (!spans || spans->size() != 1) return false;
    const auto former = selection().plainText(m_element, spans->front());
    if (!former || stop().stop_requested()) return false;
    return AtSpiTextReplacement(bus(), toolkit(), m_element).replace(spans->front(), text, *former);
}

} // namespace vorq
