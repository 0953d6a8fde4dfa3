#pragma once

#include "platform/linux/atspi/AtSpiBus.h"
#include "platform/linux/atspi/AtSpiCalls.h"
#include "platform/linux/atspi/AtSpiText.h"

#include <QString>

namespace vorq {

/// Writes a text in the place of a stretch of another, which the bus only does in two steps. What
/// is begun is brought to its end, whoever no longer waits for it: between the steps the text is
/// nowhere. Waits for the application, for each call no longer than the bus does.
class AtSpiTextReplacement {
  public:
    AtSpiTextReplacement(AtSpiBus& bus, const AtSpiToolkit& toolkit, AtSpiRef element)
        : m_bus(bus), m_toolkit(toolkit), m_element(std::move(element)) {}

    /// True if the text stands there now. The former text, which comes back if the application
    /// does not take the other, is what the stretch holds.
    [[nodiscard]] bool replace(atspi::Span span, const QString& text, const QString& former) const;

  private:
    /// What stands where a text should.
    enum class Sight { Unknown, There, Other };

    [[nodiscard]] Sight look(std::int32_t start, const QString& expected) const;
    void insert(std::int32_t start, const QString& text) const;

    AtSpiBus& m_bus;
    AtSpiToolkit m_toolkit;
    AtSpiRef m_element;
};

} // namespace vorq
