#pragma once

#include "platform/Accessibility.h"
#include "platform/linux/atspi/AtSpiApplications.h"
#include "platform/linux/atspi/AtSpiPlaces.h"
#include "platform/linux/atspi/AtSpiSelection.h"
#include "platform/linux/atspi/AtSpiWalk.h"
#include "platform/linux/x11/PixelScreens.h"
#include "platform/linux/x11/X11WindowPlace.h"

namespace vorq {

/// An element on the accessibility bus.
class AtSpiElement final : public AccessibleElement {
  public:
    /// What the elements of one question have in common.
    struct Session {
        AtSpiApplications& applications;
        const X11WindowPlace& windows;
        std::stop_token stop;
        AtSpiWalk walk;
        std::vector<PixelScreen> screens;
        // Of the application that was asked for its place last.
        QString placed;
        std::optional<ToolkitPlace> place; // nothing where it is not known
        QPointF shift;                     // what it tells too little, in its own points
        AtSpiPlaces::Patience patience{};
    };

    /// One that was reached by a walk is looked at together with its like.
    AtSpiElement(std::shared_ptr<Session> session, AtSpiRef element, bool isOfWalk = false);

    [[nodiscard]] std::optional<QString> selectedText() const override;
    [[nodiscard]] std::optional<TextRange> selectedTextRange() const override;
    [[nodiscard]] std::optional<QString> value() const override;
    [[nodiscard]] std::optional<bool> isPasswordField() const override;
    [[nodiscard]] std::optional<QPointF> position() const override;
    [[nodiscard]] std::optional<QSizeF> size() const override;
    [[nodiscard]] std::optional<std::vector<AccessibleElementPtr>> children() const override;
    [[nodiscard]] std::optional<QRectF> boundsForRange(TextRange range) const override;

    /// By the pieces of text that the selection is made of.
    [[nodiscard]] std::optional<QRectF> selectedTextMarkerBounds() const override;

    bool setSelectedText(const QString& text) override;
    bool setSelectedTextRange(TextRange range) override;

  private:
    using Span = atspi::Span;

    [[nodiscard]] AtSpiBus& bus() const { return m_session->applications.bus(); }
    [[nodiscard]] const std::stop_token& stop() const { return m_session->stop; }
    [[nodiscard]] AtSpiToolkit toolkit() const;
    [[nodiscard]] AtSpiSelection selection() const;
    [[nodiscard]] AtSpiPlaces places() const;
    // Whether a walk has found that nothing is selected.
    [[nodiscard]] bool isKnownWithoutSelection() const;
    [[nodiscard]] std::optional<TextRange> caret() const;
    void findPlace() const;
    // From the toolkit's own points to ours.
    [[nodiscard]] std::optional<QRectF> onScreen(std::optional<QRectF> rect) const;
    [[nodiscard]] std::optional<QRectF> frame() const;
    [[nodiscard]] std::optional<Span> spanOf(TextRange range, QStringView text) const;

    std::shared_ptr<Session> m_session;
    AtSpiRef m_element;
    bool m_isOfWalk;
    // Whether the bounds of a range say where it is.
    [[nodiscard]] bool tellsBounds() const;

    // The text that bounds are asked for; many are asked for one text.
    mutable std::optional<QString> m_boundsText;
    mutable std::optional<bool> m_tellsBounds;
};

} // namespace vorq
