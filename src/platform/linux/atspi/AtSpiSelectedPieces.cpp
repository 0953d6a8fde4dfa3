#include "platform/linux/atspi/AtSpiSelectedPieces.h"

namespace vorq {
namespace {

// A page that contains itself, or is endless, comes to its end all the same.
constexpr std::size_t deepestObject = 12;
constexpr std::size_t mostObjects = 200;

} // namespace

std::vector<AtSpiSelectedPieces::Piece> AtSpiSelectedPieces::of(const AtSpiRef& element) {
    m_pieces.clear();
    m_objects = 0;
    add(m_selection.lookAt({element}).front(), 0);
    return m_pieces;
}

void AtSpiSelectedPieces::addText(const AtSpiRef& element, atspi::Span span) {
    if (span.start < span.end) m_pieces.push_back({.element = element, .span = span});
}

void AtSpiSelectedPieces::add(const AtSpiSelection::Object& object, std::size_t depth) {
    if (!object.selections || depth > deepestObject) return;
    for (const atspi::Span& span : m_selection.selectedParts(object))
        addSpan(object, span, depth);
}

void AtSpiSelectedPieces::addSpan(const AtSpiSelection::Object& object, atspi::Span span,
                                  std::size_t depth) {
    const QString raw = m_selection.rawText(object.element, span).value_or(QString());
    const bool beginsWithObject = object.hasLinks && raw.startsWith(objectCharacter);
    const bool endsWithObject =
        object.hasLinks && span.end - span.start > 1 && raw.endsWith(objectCharacter);
    if (beginsWithObject) addObjectAt(object, span.start, depth);
    addText(object.element, {.start = span.start + (beginsWithObject ? 1 : 0),
                             .end = span.end - (endsWithObject ? 1 : 0)});
    if (endsWithObject) addObjectAt(object, span.end - 1, depth);
}

void AtSpiSelectedPieces::addObjectAt(const AtSpiSelection::Object& object, std::int32_t offset,
                                      std::size_t depth) {
    if (++m_objects > mostObjects) return;
    const AtSpiSelection::Object part = m_selection.objectsAt(object.element, {offset}).front();
    if (part.isField() || part.isPassword()) return;
    if (part.selections.value_or(0) > 0)
        add(part, depth + 1);
    else if (!part.hasText) // a text is merely touched
        addText(object.element, {.start = offset, .end = offset + 1});
}

} // namespace vorq
