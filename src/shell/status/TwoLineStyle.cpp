#include "shell/status/TwoLineStyle.h"

#include "shell/look/Contrast.h"

#include <QAction>
#include <QApplication>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOptionMenuItem>
#include <QWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int sideRoom = 14;
constexpr int checkRoom = 20; // beside the check marks that the menu has
constexpr int edgeRoom = 5;
constexpr int lineGap = 1;
constexpr double secondSize = 11.0 / 13;
constexpr float secondInk = 0.72F; // of the ink of the first line

const QStyleOptionMenuItem* twoLines(const QStyleOption* option) {
    const auto* entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    return entry != nullptr && entry->text.contains(u'\t') ? entry : nullptr;
}

bool isSeparator(QStyle::ContentsType type, const QStyleOption* option) {
    const auto* entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
    return type == QStyle::CT_MenuItem && entry != nullptr &&
           entry->menuItemType == QStyleOptionMenuItem::Separator;
}

QString secondLine(const QStyleOptionMenuItem& entry) {
    return entry.text.section(u'\t', 1);
}

QFont secondFont(QFont font) {
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * secondSize);
    else
        font.setPixelSize(qRound(font.pixelSize() * secondSize));
    return font;
}

int lineHeight(const QFont& font) {
    return QFontMetrics(font).height();
}

// Two lines stand where the desktop's text is large, too.
int heightOf(const QStyleOptionMenuItem& entry) {
    if (secondLine(entry).isEmpty()) return lineHeight(entry.font) + 2 * edgeRoom;
    const int lines = lineHeight(entry.font) + lineGap + lineHeight(secondFont(entry.font));
    return std::max(TwoLineStyle::height, lines + 2 * edgeRoom);
}

// The room that a menu adds for what stands behind its tabs, to all of its entries.
int columnWidth(const QStyleOptionMenuItem& entry, const QWidget* menu) {
    int width = entry.fontMetrics.horizontalAdvance(secondLine(entry));
    if (menu == nullptr) return width;
    for (const QAction* each : menu->actions())
        width =
            std::max(width, entry.fontMetrics.horizontalAdvance(each->text().section(u'\t', 1)));
    return width;
}

QRect textPlace(const QStyleOptionMenuItem& entry) {
    const int check = entry.menuHasCheckableItems ? checkRoom : 0;
    return entry.rect.adjusted(sideRoom + check, edgeRoom, -sideRoom, -edgeRoom);
}

// Of the wider of the two lines.
int widthOf(const QStyleOptionMenuItem& entry) {
    const QFontMetrics first(entry.font);
    const QFontMetrics second(secondFont(entry.font));
    const int text = std::max(first.horizontalAdvance(entry.text.section(u'\t', 0, 0)),
                              second.horizontalAdvance(secondLine(entry)));
    const int sides = entry.rect.width() - textPlace(entry).width();
    return std::clamp(text + sides, TwoLineStyle::width, TwoLineStyle::greatestWidth);
}

void drawLine(QPainter& painter, const QRect& place, const QString& text) {
    const QString shown = painter.fontMetrics().elidedText(QString(text).replace(u"&&"_s, u"&"_s),
                                                           Qt::ElideRight, place.width());
    painter.drawText(place, Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

void drawLines(const QStyleOptionMenuItem& entry, QPainter& painter) {
    const bool isActive = entry.state.testFlag(QStyle::State_Selected);
    const QPalette& palette = entry.palette;
    const QColor ink = palette.color(isActive ? QPalette::HighlightedText : QPalette::Text);
    const QColor ground = palette.color(isActive ? QPalette::Highlight : QPalette::Base);
    QColor quiet = ink;
    quiet.setAlphaF(secondInk);
    QRect place = textPlace(entry);
    place.setHeight(lineHeight(entry.font));
    painter.save();
    painter.setFont(entry.font);
    painter.setPen(ink);
    drawLine(painter, place, entry.text.section(u'\t', 0, 0));
    const QFont second = secondFont(entry.font);
    place = {place.left(), place.bottom() + 1 + lineGap, place.width(), lineHeight(second)};
    painter.setFont(second);
    painter.setPen(Contrast::readable(Contrast::over(quiet, ground), ground, ink));
    drawLine(painter, place, secondLine(entry));
    painter.restore();
}

} // namespace

TwoLineStyle::TwoLineStyle() : QProxyStyle(QStyleFactory::create(QApplication::style()->name())) {}

void TwoLineStyle::drawControl(ControlElement element, const QStyleOption* option,
                               QPainter* painter, const QWidget* widget) const {
    const QStyleOptionMenuItem* entry = element == CE_MenuItem ? twoLines(option) : nullptr;
    if (entry == nullptr) return QProxyStyle::drawControl(element, option, painter, widget);
    QStyleOptionMenuItem plate = *entry;
    plate.text.clear();
    QProxyStyle::drawControl(element, &plate, painter, widget);
    drawLines(*entry, *painter);
}

// Nothing stands in the second column that the menu adds.
QSize TwoLineStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                     const QSize& contents, const QWidget* widget) const {
    const QStyleOptionMenuItem* entry = type == CT_MenuItem ? twoLines(option) : nullptr;
    if (isSeparator(type, option))
        return {1, QProxyStyle::sizeFromContents(type, option, contents, widget).height()};
    if (entry == nullptr) return QProxyStyle::sizeFromContents(type, option, contents, widget);
    return {std::max(widthOf(*entry) - columnWidth(*entry, widget), 0), heightOf(*entry)};
}

} // namespace vorq
