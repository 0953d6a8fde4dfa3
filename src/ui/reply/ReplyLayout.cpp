#include "ui/reply/ReplyLayout.h"

#include <QPainter>

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace vorq {

BlockLayout& ReplyLayout::layoutOf(int row) const {
    const Entry& entry = at(row);
    if (!entry.layout) {
        entry.layout = std::make_unique<BlockLayout>(entry.source, m_theme);
        ++m_builtBlocks;
    }
    return *entry.layout;
}

void ReplyLayout::setTheme(const ReplyTheme& theme) {
    if (m_theme == theme) return;
    m_theme = theme;
    for (const Entry& entry : m_entries)
        entry.layout.reset();
    goOnFrom(0);
}

void ReplyLayout::replace(int row, int count, const QList<Block>& blocks) {
    m_stale = std::min(m_stale, topOf(row));
    const auto first = m_entries.begin() + row;
    m_entries.erase(first, first + count);
    std::vector<Entry> added;
    added.reserve(static_cast<std::size_t>(blocks.size()));
    for (const Block& block : blocks)
        added.push_back({block, nullptr, 0});
    m_entries.insert(m_entries.begin() + row, std::make_move_iterator(added.begin()),
                     std::make_move_iterator(added.end()));
    goOnFrom(std::min(m_done, row));
}

// The first block that is not set has its place before it is set: it may have been built already,
// and then counts for the height.
void ReplyLayout::goOnFrom(int row) {
    m_done = row;
    if (row == count()) return;
    Entry& entry = at(row);
    entry.y = 0;
    if (row == 0) return;
    const Entry& above = at(row - 1);
    entry.y = above.y + above.layout->height() +
              ReplyStyle::gapBetween(above.source.kind, entry.source.kind);
}

bool ReplyLayout::layOut(double width, QDeadlineTimer deadline) {
    if (width != m_width) goOnFrom(0);
    m_width = width;
    if (!isDone()) m_stale = std::min(m_stale, topOf(m_done));
    while (m_done < count()) {
        if (layoutOf(m_done).layOutMore(width)) goOnFrom(m_done + 1);
        if (deadline.hasExpired()) break;
    }
    return isDone();
}

double ReplyLayout::topOf(int row) const {
    const int above = std::min(row, m_done);
    return above > 0 ? blockRect(above - 1).bottom() : 0;
}

double ReplyLayout::takeStale() {
    return std::exchange(m_stale, std::numeric_limits<double>::infinity());
}

double ReplyLayout::height() const {
    if (m_entries.empty()) return 0;
    const int last = std::min(m_done, count() - 1);
    return at(last).layout ? at(last).y + at(last).layout->height()
           : last > 0      ? blockRect(last - 1).bottom()
                           : 0;
}

double ReplyLayout::naturalWidth() const {
    double widest = 0;
    for (const Entry& entry : m_entries)
        if (entry.layout) widest = std::max(widest, entry.layout->naturalWidth());
    return widest;
}

QRectF ReplyLayout::blockRect(int row) const {
    return {0, at(row).y, m_width, layoutOf(row).height()};
}

int ReplyLayout::blockAt(double y) const {
    if (m_entries.empty()) return -1;
    // Only what is set has a place.
    const int reached = m_done < count() && at(m_done).layout ? m_done + 1 : std::max(m_done, 1);
    const auto set = m_entries.begin() + std::min(reached, count());
    const auto after = std::upper_bound(m_entries.begin(), set, y,
                                        [](double value, const Entry& e) { return value < e.y; });
    return after == m_entries.begin()
               ? 0
               : static_cast<int>(std::distance(m_entries.begin(), after)) - 1;
}

ReplyPosition ReplyLayout::positionAt(QPointF point) const {
    const int row = blockAt(point.y());
    if (row < 0 || point.y() < 0) return {};
    return {row, layoutOf(row).positionAt(point - QPointF(0, at(row).y))};
}

ReplyPosition ReplyLayout::characterAt(QPointF point) const {
    const int row = blockAt(point.y());
    if (row < 0) return {};
    return {row, layoutOf(row).characterAt(point - QPointF(0, at(row).y))};
}

BlockRange ReplyLayout::within(int row, const ReplyRange& range) const {
    if (range.isEmpty() || row < range.from.block || row > range.to.block) return {};
    return {row == range.from.block ? range.from.offset : 0,
            row == range.to.block ? range.to.offset : layoutOf(row).plainText().size()};
}

bool ReplyLayout::covers(QPointF point, const ReplyRange& range) const {
    const int row = blockAt(point.y());
    return row >= 0 && layoutOf(row).covers(point - QPointF(0, at(row).y), within(row, range));
}

QRectF ReplyLayout::firstLineRect(const ReplyRange& range) const {
    for (int row = range.from.block; row <= range.to.block && row < count(); ++row) {
        const QRectF rect = layoutOf(row).firstLineRect(within(row, range));
        if (!rect.isNull()) return rect.translated(0, at(row).y);
    }
    return {};
}

QRectF ReplyLayout::cursorRect(const ReplyPosition& position) const {
    if (position.block >= count()) return {};
    return layoutOf(position.block).cursorRect(position.offset).translated(0, at(position.block).y);
}

QString ReplyLayout::linkAt(QPointF point) const {
    const int row = blockAt(point.y());
    return row < 0 ? QString() : layoutOf(row).linkAt(point - QPointF(0, at(row).y));
}

QString ReplyLayout::text(const ReplyRange& range) const {
    QString text;
    for (int row = range.from.block; row <= range.to.block && row < count(); ++row) {
        const BlockRange part = within(row, range);
        if (row > range.from.block) text += u'\n';
        text += layoutOf(row).plainText().mid(part.from, part.to - part.from);
    }
    return text.replace(QChar(QChar::LineSeparator), u'\n');
}

QString ReplyLayout::written(const ReplyRange& range) const {
    return text(range).remove(ReplyStyle::isolateStart).remove(ReplyStyle::isolateEnd);
}

ReplyPosition ReplyLayout::end() const {
    if (m_entries.empty()) return {};
    return {count() - 1, layoutOf(count() - 1).plainText().size()};
}

ReplyPosition ReplyLayout::clamped(const ReplyPosition& position) const {
    if (position.block >= count()) return end();
    return {position.block, std::min(position.offset, layoutOf(position.block).plainText().size())};
}

qsizetype ReplyLayout::offsetOf(const ReplyPosition& position) const {
    qsizetype offset = position.offset;
    for (int row = 0; row < position.block && row < count(); ++row)
        offset += layoutOf(row).plainText().size() + 1;
    return offset;
}

ReplyPosition ReplyLayout::positionOf(qsizetype offset) const {
    qsizetype left = std::max<qsizetype>(0, offset);
    for (int row = 0; row < count(); ++row) {
        const qsizetype length = layoutOf(row).plainText().size();
        if (left <= length) return {row, left};
        left -= length + 1;
    }
    return end();
}

bool ReplyLayout::scrollAt(QPointF point, double dx) {
    const int row = blockAt(point.y());
    return row >= 0 && blockRect(row).contains(point) && layoutOf(row).scrollBy(dx);
}

bool ReplyLayout::scrollTo(const ReplyPosition& position) {
    return position.block < count() && layoutOf(position.block).scrollTo(position.offset);
}

void ReplyLayout::draw(QPainter& painter, const QRectF& clip, const Look& look) const {
    const int first = blockAt(clip.top());
    for (int row = std::max(first, 0); row < count() && row <= m_done; ++row) {
        const Entry& entry = at(row);
        if (!entry.layout || entry.y > clip.bottom()) break;
        painter.save();
        painter.translate(0, entry.y);
        if (look.arrivingFrom >= 0 && row >= look.arrivingFrom)
            painter.setOpacity(look.arrivingOpacity);
        entry.layout->draw(painter, clip.translated(0, -entry.y), within(row, look.selection));
        painter.restore();
    }
}

} // namespace vorq
