#pragma once

#include "platform/linux/atspi/AtSpiFocusOrder.h"

#include <QDBusMessage>
#include <QMap>
#include <QRectF>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace vorq {

/// What can be asked on the accessibility bus: each function makes one call, to be sent alone or
/// together with others, and the readers below take the answers apart. An answer that is not of the
/// expected form, whoever made it, reads as nothing.
namespace atspi {

enum class State : unsigned { Active = 1, Focused = 12, Showing = 25, ManagesDescendants = 31 };

enum class Role : std::uint32_t {
    Image = 27,
    Label = 29,
    Panel = 39,
    PasswordText = 40,
    RootPane = 46,
    TableCell = 56,
    Paragraph = 73,
    Link = 88,
    Page = 95,
    Static = 116,
};

[[nodiscard]] AtSpiRef registryRoot();
[[nodiscard]] AtSpiRef applicationRoot(const QString& service);

[[nodiscard]] QDBusMessage processOf(const QString& service);
[[nodiscard]] QDBusMessage toolkitName(const AtSpiRef& application);
[[nodiscard]] QDBusMessage name(const AtSpiRef& element);
[[nodiscard]] QDBusMessage children(const AtSpiRef& element);
[[nodiscard]] QDBusMessage parent(const AtSpiRef& element);
[[nodiscard]] QDBusMessage states(const AtSpiRef& element);
[[nodiscard]] QDBusMessage interfaces(const AtSpiRef& element);
[[nodiscard]] QDBusMessage role(const AtSpiRef& element);
/// How a page sets the element, and the like.
[[nodiscard]] QDBusMessage attributes(const AtSpiRef& element);
/// All that has the focus below an element, for those that can search.
[[nodiscard]] QDBusMessage focusedBelow(const AtSpiRef& element);
/// In the screen's coordinates, or what the toolkit takes for them.
[[nodiscard]] QDBusMessage extents(const AtSpiRef& element);

[[nodiscard]] QDBusMessage characterCount(const AtSpiRef& element);
[[nodiscard]] QDBusMessage caretOffset(const AtSpiRef& element);
[[nodiscard]] QDBusMessage text(const AtSpiRef& element, std::int32_t start, std::int32_t end);
[[nodiscard]] QDBusMessage selectionCount(const AtSpiRef& element);
[[nodiscard]] QDBusMessage selection(const AtSpiRef& element, std::int32_t index);
[[nodiscard]] QDBusMessage rangeExtents(const AtSpiRef& element, std::int32_t start,
                                        std::int32_t end);
[[nodiscard]] QDBusMessage setSelection(const AtSpiRef& element, std::int32_t start,
                                        std::int32_t end);
[[nodiscard]] QDBusMessage addSelection(const AtSpiRef& element, std::int32_t start,
                                        std::int32_t end);
[[nodiscard]] QDBusMessage deleteText(const AtSpiRef& element, std::int32_t start,
                                      std::int32_t end);
[[nodiscard]] QDBusMessage insertText(const AtSpiRef& element, std::int32_t at,
                                      const QString& inserted, std::int32_t length);

/// The element that stands for the character at an offset, in three steps.
[[nodiscard]] QDBusMessage linkIndex(const AtSpiRef& element, std::int32_t offset);
[[nodiscard]] QDBusMessage link(const AtSpiRef& element, std::int32_t index);
[[nodiscard]] QDBusMessage linkedObject(const AtSpiRef& link);

struct Span {
    std::int32_t start = 0;
    std::int32_t end = 0;
};

/// The first some thousands; nobody looks at more.
[[nodiscard]] std::optional<std::vector<AtSpiRef>> refsIn(const QDBusMessage& reply);
[[nodiscard]] std::optional<AtSpiRef> refIn(const QDBusMessage& reply);
/// One bit a state.
[[nodiscard]] std::optional<std::uint64_t> statesIn(const QDBusMessage& reply);
[[nodiscard]] std::optional<std::uint32_t> numberIn(const QDBusMessage& reply);
[[nodiscard]] std::optional<std::int32_t> integerIn(const QDBusMessage& reply);
[[nodiscard]] std::optional<QString> textIn(const QDBusMessage& reply);
/// Whether the interfaces of an element include those for texts and for the links in them. The
/// toolkits of many applications complain in their log when an element without is asked.
[[nodiscard]] bool offersText(const QDBusMessage& reply);
[[nodiscard]] bool offersLinks(const QDBusMessage& reply);
[[nodiscard]] QMap<QString, QString> attributesIn(const QDBusMessage& reply);
[[nodiscard]] bool truthIn(const QDBusMessage& reply);
/// Whether the application may still do what it was called for.
[[nodiscard]] bool isLate(const QDBusMessage& reply);
/// Both ends in order, and not negative.
[[nodiscard]] std::optional<Span> spanIn(const QDBusMessage& reply);
[[nodiscard]] std::optional<QRectF> rectIn(const QDBusMessage& reply);
[[nodiscard]] std::optional<QString> propertyTextIn(const QDBusMessage& reply);
[[nodiscard]] std::optional<AtSpiRef> propertyRefIn(const QDBusMessage& reply);
[[nodiscard]] std::optional<std::int32_t> propertyIntegerIn(const QDBusMessage& reply);

[[nodiscard]] constexpr bool has(std::uint64_t states, State state) {
    return (states >> static_cast<unsigned>(state) & 1U) != 0;
}

} // namespace atspi
} // namespace vorq
