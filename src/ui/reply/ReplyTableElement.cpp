#include "ui/reply/ReplyTableElement.h"

#include "ui/reply/ReplyElements.h"

#include <algorithm>

namespace vorq {

QAccessibleInterface* ReplyTableElement::child(int index) const {
    if (index < 0 || index >= childCount()) return nullptr;
    return cellAt(index / columnCount(), index % columnCount());
}

int ReplyTableElement::childCount() const {
    return rowCount() * columnCount();
}

int ReplyTableElement::indexOfChild(const QAccessibleInterface* child) const {
    const auto* element = dynamic_cast<const ReplyElement*>(child);
    const auto* cell = dynamic_cast<const ReplyCellPlace*>(child);
    if (!element || !cell || element->key().block != key().block) return -1;
    return cell->rowIndex() * columnCount() + cell->columnIndex();
}

void* ReplyTableElement::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                               : nullptr;
}

QAccessibleInterface* ReplyTableElement::cellAt(int row, int column) const {
    const int inRow = std::clamp(row, 0, rowCount() - 1);
    const int inColumn = std::clamp(column, 0, columnCount() - 1);
    const int part = block().partAt(inRow, inColumn);
    const int blank = block().partCount() + inRow * columnCount() + inColumn;
    return elements().at({key().block, part < 0 ? blank : part});
}

QString ReplyTableElement::columnDescription(int column) const {
    return cellAt(0, column)->text(QAccessible::Name);
}

int ReplyTableElement::columnCount() const {
    return block().columnCount();
}

int ReplyTableElement::rowCount() const {
    return block().part(block().partCount() - 1).row + 1;
}

QList<QAccessibleInterface*> ReplyCellPlace::columnHeaderCells() const {
    return {table()->tableInterface()->cellAt(0, columnIndex())};
}

void* ReplyCellElement::interface_cast(QAccessible::InterfaceType type) {
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface*>(this);
    return ReplyTextElement::interface_cast(type);
}

QAccessibleInterface* ReplyBlankCell::parent() const {
    return elements().at({key().block});
}

void* ReplyBlankCell::interface_cast(QAccessible::InterfaceType type) {
    return type == QAccessible::TableCellInterface
               ? static_cast<QAccessibleTableCellInterface*>(this)
               : nullptr;
}

int ReplyBlankCell::columnIndex() const {
    return index() % block().columnCount();
}

int ReplyBlankCell::rowIndex() const {
    return index() / block().columnCount();
}

// Under the header of its column, or beside the last cell of its row.
QRectF ReplyBlankCell::placeInBlock() const {
    const int header = block().partAt(0, columnIndex());
    const int first = block().partAt(rowIndex(), 0);
    if (header < 0 || first < 0) return {};
    QRectF place = block().part(header).place;
    place.moveTop(block().part(first).place.top());
    return place;
}

} // namespace vorq
