#include "ui/reply/ReplyElement.h"

#include "ui/reply/ReplyElements.h"
#include "ui/reply/ReplyView.h"

#include <QQuickWindow>

namespace vorq {
namespace {

using Kind = BlockLayout::Kind;

} // namespace

ReplyView& ReplyElement::replyView() const {
    return m_elements.view();
}

const BlockLayout& ReplyElement::block() const {
    return replyView().layout().block(m_key.block);
}

QWindow* ReplyElement::window() const {
    return replyView().window();
}

QAccessibleInterface* ReplyElement::childAt(int x, int y) const {
    for (int i = 0; i < childCount(); ++i) {
        QAccessibleInterface* element = child(i);
        if (!element->rect().contains(x, y)) continue;
        QAccessibleInterface* within = element->childAt(x, y);
        return within ? within : element;
    }
    return nullptr;
}

QRect ReplyElement::rect() const {
    const ReplyLayout& layout = replyView().layout();
    if (!layout.isSet(m_key.block)) return {};
    const QRectF place = layout.blockRect(m_key.block);
    return onScreen(replyView(), placeInBlock().translated(place.topLeft()));
}

QAccessible::State ReplyElement::state() const {
    const ReplyView& view = replyView();
    QAccessible::State state;
    state.invisible = !view.isVisible() || !window() || !window()->isVisible();
    const QRect seen = onScreen(view, {0, view.viewTop(), view.width(), view.viewHeight()});
    state.offscreen = !rect().intersects(seen);
    state.focused = m_elements.isFocused(*this);
    state.focusable = state.focused;
    return state;
}

QAccessibleInterface* ReplyGroupElement::parent() const {
    return elements().reply();
}

QAccessibleInterface* ReplyGroupElement::child(int index) const {
    return index >= 0 && index < childCount() ? elements().at({key().block, index}) : nullptr;
}

int ReplyGroupElement::childCount() const {
    return block().partCount();
}

int ReplyGroupElement::indexOfChild(const QAccessibleInterface* child) const {
    const auto* element = dynamic_cast<const ReplyElement*>(child);
    return element && child->parent() == this ? element->key().part : -1;
}

QString ReplyGroupElement::text(QAccessible::Text kind) const {
    if (kind != QAccessible::Name) return {};
    if (this->kind() == Kind::Code) return ReplyView::tr("Code");
    return this->kind() == Kind::Quote ? ReplyView::tr("Quotation") : QString();
}

QAccessible::Role ReplyGroupElement::role() const {
    switch (kind()) {
    case Kind::Bullets:
    case Kind::Numbered:
        return QAccessible::List;
    case Kind::Divider:
        return QAccessible::Separator;
    default:
        return QAccessible::Grouping;
    }
}

QRectF ReplyGroupElement::placeInBlock() const {
    return {{0, 0}, replyView().layout().blockRect(key().block).size()};
}

BlockLayout::Part ReplyTextElement::part() const {
    return block().part(key().part);
}

ReplyRange ReplyTextElement::span() const {
    const BlockRange range = part().range;
    return {{key().block, range.from}, {key().block, range.to}};
}

QAccessibleInterface* ReplyTextElement::parent() const {
    return ReplyElements::isOneText(kind()) ? elements().reply() : elements().at({key().block});
}

QAccessibleInterface* ReplyTextElement::child(int index) const {
    return index >= 0 && index < childCount() ? elements().at({key().block, key().part, index})
                                              : nullptr;
}

int ReplyTextElement::childCount() const {
    return static_cast<int>(block().links(key().part).size());
}

int ReplyTextElement::indexOfChild(const QAccessibleInterface* child) const {
    const auto* element = dynamic_cast<const ReplyElement*>(child);
    return element && child->parent() == this ? element->key().link : -1;
}

// A name is read whole where a text is read line by line, so only what is short has one.
QString ReplyTextElement::text(QAccessible::Text kind) const {
    const bool isHeading = role() == QAccessible::Heading;
    if (kind == QAccessible::Description && isHeading)
        return ReplyView::tr("Level %1").arg(this->kind() == Kind::Title ? 1 : 2);
    if (kind != QAccessible::Name || this->kind() == Kind::Body || this->kind() == Kind::Quote ||
        this->kind() == Kind::Code)
        return {};
    const QString said = ReplyText::text(0, characterCount());
    return this->kind() == Kind::Numbered ? part().marker + u' ' + said : said;
}

QAccessible::Role ReplyTextElement::role() const {
    switch (kind()) {
    case Kind::Title:
    case Kind::Section:
        return QAccessible::Heading;
    case Kind::Bullets:
    case Kind::Numbered:
        return QAccessible::ListItem;
    case Kind::Table:
        return part().row == 0 ? QAccessible::ColumnHeader : QAccessible::Cell;
    default:
        return QAccessible::Paragraph;
    }
}

QAccessible::State ReplyTextElement::state() const {
    QAccessible::State state = ReplyElement::state();
    state.focusable = true;
    state.multiLine = true;
    state.selectableText = true;
    return state;
}

void* ReplyTextElement::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::ActionInterface) return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

QStringList ReplyTextElement::actionNames() const {
    return {setFocusAction()};
}

void ReplyTextElement::doAction(const QString& name) {
    if (name == setFocusAction()) replyView().putCaret(span().from);
}

QRectF ReplyTextElement::placeInBlock() const {
    return part().place;
}

BlockLayout::Link ReplyLinkElement::link() const {
    return block().links(key().part).value(key().link);
}

QAccessibleInterface* ReplyLinkElement::parent() const {
    return elements().at({key().block, key().part});
}

QString ReplyLinkElement::text(QAccessible::Text kind) const {
    if (kind == QAccessible::Value || kind == QAccessible::Description) return link().address;
    const BlockRange range = link().range;
    return kind == QAccessible::Name ? block().plainText().mid(range.from, range.to - range.from)
                                     : QString();
}

void* ReplyLinkElement::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
}

QStringList ReplyLinkElement::actionNames() const {
    return {pressAction()};
}

void ReplyLinkElement::doAction(const QString& name) {
    if (name == pressAction()) emit replyView().linkActivated(link().address);
}

QRectF ReplyLinkElement::placeInBlock() const {
    return block().firstLineRect(link().range);
}

} // namespace vorq
