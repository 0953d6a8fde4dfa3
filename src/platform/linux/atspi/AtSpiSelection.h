#pragma once

#include "platform/linux/atspi/AtSpiBus.h"
#include "platform/linux/atspi/AtSpiCalls.h"
#include "platform/linux/atspi/AtSpiText.h"

#include <QString>

#include <optional>
#include <stop_token>
#include <vector>

namespace vorq {

/// Reads text and selections of elements with text. A field for passwords has neither: nothing of
/// it is ever asked.
///
/// A page of a browser is a text of objects, each of which has its own text and its own part of the
/// selection. Their texts take the place of the objects: blocks on lines of their own,
/// paragraphs with an empty line between them, cells of a row apart by tabs, and nothing for the
/// fields of a form.
class AtSpiSelection {
  public:
    using Span = atspi::Span;

    AtSpiSelection(AtSpiBus& bus, const AtSpiToolkit& toolkit, std::stop_token stop)
        : m_bus(bus), m_toolkit(toolkit), m_stop(std::move(stop)) {}

    /// What is selected, in the toolkit's offsets; empty if nothing is, nothing for an element
    /// without text, or for a paragraph that has but a part of what is selected.
    [[nodiscard]] std::optional<std::vector<Span>> spans(const AtSpiRef& element) const;

    /// The selected text; several selections are on lines of their own. For a paragraph of a shape
    /// in a drawing, what is selected in the whole shape. Nothing also where the toolkit tells
    /// wrong offsets.
    [[nodiscard]] std::optional<QString> selectedText(const AtSpiRef& element) const;

    /// The text as it stands, objects as objects. Nothing for a password or too long a text.
    [[nodiscard]] std::optional<QString> plainText(const AtSpiRef& element, Span span) const;
    [[nodiscard]] std::optional<QString> value(const AtSpiRef& element) const;

    /// Whether its text is hidden as it is typed; nothing for an element that tells no role.
    [[nodiscard]] std::optional<bool> isPasswordField(const AtSpiRef& element) const;

  private:
    friend class AtSpiSelectedPieces;
    struct Reading;
    struct Object {
        AtSpiRef element;
        std::optional<std::uint32_t> role;
        bool hasText = false;
        bool hasLinks = false;
        // Nothing for what is not readable.
        std::optional<std::int32_t> selections;
        // How it is set, and the name of its element, on a page.
        QString display;
        QString tag;

        [[nodiscard]] bool isReadable() const;
        [[nodiscard]] bool isPassword() const;
        [[nodiscard]] bool isInline() const;
        [[nodiscard]] bool isCell() const;
        [[nodiscard]] bool isParagraph() const;
        [[nodiscard]] bool isListItem() const;
        [[nodiscard]] bool isField() const;
    };

    [[nodiscard]] std::vector<Object> lookAt(const std::vector<AtSpiRef>& elements) const;
    [[nodiscard]] std::vector<Span> selectedParts(const Object& object) const;
    // Whether other elements may have parts of the selection, too.
    [[nodiscard]] bool isPartOfMore(const AtSpiRef& element, const std::vector<Span>& spans) const;
    // All that is selected in the shape that a paragraph is of; nothing for one of a page.
    [[nodiscard]] std::optional<QString> selectedInShape(const AtSpiRef& paragraph) const;
    [[nodiscard]] std::optional<QString> rawText(const AtSpiRef& element, Span span) const;
    [[nodiscard]] std::optional<std::vector<Span>> spansOf(const Object& object) const;
    [[nodiscard]] std::vector<Object> objectsAt(const AtSpiRef& element,
                                                const std::vector<std::int32_t>& offsets) const;
    [[nodiscard]] std::vector<std::int32_t> objectOffsets(QStringView raw,
                                                          std::int32_t start) const;
    [[nodiscard]] bool isMiscounted(const AtSpiRef& element) const;
    [[nodiscard]] QString composed(const Object& object, Span span, Reading& reading) const;
    [[nodiscard]] QString textOf(const Object& object, bool isAtEdge, Reading& reading) const;

    AtSpiBus& m_bus;
    AtSpiToolkit m_toolkit;
    std::stop_token m_stop;
};

} // namespace vorq
