#pragma once

#include "platform/linux/atspi/AtSpiSelection.h"

namespace vorq {

/// Finds the pieces of text that a selection is made of: on a page each object has its own part of
/// it, and the text around them has the rest.
class AtSpiSelectedPieces {
  public:
    struct Piece {
        AtSpiRef element;
        atspi::Span span;
    };

    /// The selection must outlive this object.
    explicit AtSpiSelectedPieces(const AtSpiSelection& selection) : m_selection(selection) {}

    /// In the order of the text. Objects between both ends of a selection are selected as wholes,
    /// and are characters of what they stand in. A field at an end is not of the page.
    [[nodiscard]] std::vector<Piece> of(const AtSpiRef& element);

  private:
    void add(const AtSpiSelection::Object& object, std::size_t depth);
    void addSpan(const AtSpiSelection::Object& object, atspi::Span span, std::size_t depth);
    void addObjectAt(const AtSpiSelection::Object& object, std::int32_t offset, std::size_t depth);
    void addText(const AtSpiRef& element, atspi::Span span);

    const AtSpiSelection& m_selection;
    std::vector<Piece> m_pieces;
    std::size_t m_objects = 0;
};

} // namespace vorq
