#pragma once

#include "platform/linux/atspi/AtSpiBus.h"
#include "platform/linux/atspi/AtSpiCalls.h"
#include "platform/linux/atspi/AtSpiText.h"

#include <QPointF>
#include <QRectF>
#include <QStringView>

#include <chrono>
#include <optional>
#include <stop_token>

namespace vorq {

/// Asks where elements and texts are, in the toolkit's own points, and sets right what the toolkit
/// is known to tell wrong. What it tells without a size is nothing.
class AtSpiPlaces {
  public:
    using Span = atspi::Span;

    /// What the questions of one capture have in common.
    struct Patience {
        /// How long a toolkit that is only beginning to find out is waited for.
        std::chrono::milliseconds left{120};
    };

    /// The bus and the patience must outlive this object.
    AtSpiPlaces(AtSpiBus& bus, const AtSpiToolkit& toolkit, std::stop_token stop,
                Patience& patience)
        : m_bus(bus), m_toolkit(toolkit), m_stop(std::move(stop)), m_patience(patience) {}

    [[nodiscard]] std::optional<QRectF> frame(const AtSpiRef& element) const;
    [[nodiscard]] std::optional<QRectF> bounds(const AtSpiRef& element, Span span) const;

    /// How far what the toolkit tells of an element is from where it is.
    [[nodiscard]] QPointF shift(const AtSpiRef& element) const;

    /// Whether the places of an element's text are those of another paragraph.
    [[nodiscard]] bool misplacesParagraphs(const AtSpiRef& element, QStringView text) const;

    /// Whether the places of an element are in pixels, whatever the scale of its window.
    [[nodiscard]] bool isInPixels(const AtSpiRef& element) const;

  private:
    [[nodiscard]] std::optional<QRectF> ask(const QDBusMessage& question) const;

    AtSpiBus& m_bus;
    AtSpiToolkit m_toolkit;
    std::stop_token m_stop;
    Patience& m_patience;
};

} // namespace vorq
