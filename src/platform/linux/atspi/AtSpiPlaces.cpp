#include "platform/linux/atspi/AtSpiPlaces.h"

#include "support/async/BlockFor.h"

namespace vorq {
namespace {

constexpr std::chrono::milliseconds pauseBetween{10};
constexpr int deepestElement = 40;

// The first character of a paragraph that has any, from an offset on; nothing if there is none.
std::optional<qsizetype> paragraphFrom(QStringView text, qsizetype offset) {
    while (offset < text.size() && text[offset] == u'\n')
        ++offset;
    return offset < text.size() ? std::optional(offset) : std::nullopt;
}

} // namespace

// On a fresh page of a browser the first answers have no size.
std::optional<QRectF> AtSpiPlaces::ask(const QDBusMessage& question) const {
    QDBusMessage reply = m_bus.call(question, m_stop);
    bool isFirst = true;
    while (reply.type() == QDBusMessage::ReplyMessage && !atspi::rectIn(reply)) {
        const bool mayWait = m_toolkit.tellsPlacesLate && m_patience.left >= pauseBetween;
        if (m_stop.stop_requested() || (!isFirst && !mayWait)) break;
        if (!isFirst) {
            blockFor(pauseBetween, m_stop);
            m_patience.left -= pauseBetween;
        }
        isFirst = false;
        reply = m_bus.call(question, m_stop);
    }
    return atspi::rectIn(reply);
}

std::optional<QRectF> AtSpiPlaces::frame(const AtSpiRef& element) const {
    return ask(atspi::extents(element));
}

std::optional<QRectF> AtSpiPlaces::bounds(const AtSpiRef& element, Span span) const {
    return ask(atspi::rangeExtents(element, span.start, span.end));
}

// The contents of a window are told to begin where the window does, though its menu is above them.
// What holds them tells where they end.
QPointF AtSpiPlaces::shift(const AtSpiRef& element) const {
    if (!m_toolkit.placesOverMenu) return {};
    AtSpiRef inner = element;
    for (int depth = 0; depth < deepestElement; ++depth) {
        const AtSpiBus::Messages facts =
            m_bus.call({atspi::role(inner), atspi::parent(inner), atspi::extents(inner)}, m_stop);
        const auto outer = atspi::propertyRefIn(facts[1]);
        if (!outer) return {};
        if (atspi::numberIn(facts[0]) == static_cast<std::uint32_t>(atspi::Role::RootPane)) {
            const auto told = atspi::rectIn(facts[2]);
            const auto held = atspi::rectIn(m_bus.call(atspi::extents(*outer), m_stop));
            if (!told || !held || told->left() != held->left()) return {};
            // The menu takes a part of the height at most.
            const double missing = held->bottom() - told->bottom();
            return {0, missing > 0 && missing < held->height() / 2 ? missing : 0};
        }
        inner = *outer;
    }
    return {};
}

// Later paragraphs are below the first one.
bool AtSpiPlaces::misplacesParagraphs(const AtSpiRef& element, QStringView text) const {
    if (!m_toolkit.misplacesParagraphs) return false;
    const auto first = paragraphFrom(text, 0);
    if (!first) return false;
    const qsizetype end = text.indexOf(u'\n', *first);
    const auto second = end < 0 ? std::nullopt : paragraphFrom(text, end);
    if (!second) return false;
    const auto placeOf = [&](qsizetype at) {
        const auto offset = static_cast<std::int32_t>(at);
        return bounds(element, {.start = offset, .end = offset + 1});
    };
    const auto upper = placeOf(*first);
    const auto lower = placeOf(*second);
    return upper && lower && lower->top() <= upper->top();
}

bool AtSpiPlaces::isInPixels(const AtSpiRef& element) const {
    if (!m_toolkit.placesPagesInPixels) return false;
    AtSpiRef inner = element;
    for (int depth = 0; depth < deepestElement; ++depth) {
        const AtSpiBus::Messages facts =
            m_bus.call({atspi::role(inner), atspi::parent(inner)}, m_stop);
        if (atspi::numberIn(facts[0]) == static_cast<std::uint32_t>(atspi::Role::Page)) return true;
        const auto outer = atspi::propertyRefIn(facts[1]);
        if (!outer) return false;
        inner = *outer;
    }
    return false;
}

} // namespace vorq
