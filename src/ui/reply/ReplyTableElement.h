#pragma once

#include "ui/reply/ReplyElement.h"

namespace vorq {

/// A table, whose children are its cells row by row, the header first. Rows that are too short end
/// in blank cells.
class ReplyTableElement final : public ReplyGroupElement, public QAccessibleTableInterface {
  public:
    using ReplyGroupElement::ReplyGroupElement;

    // QAccessibleInterface
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int childCount() const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Table; }
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleTableInterface. Nothing of it can be selected.
    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    /// The nearest cell for one that is none: whoever asks counts on a cell.
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override;
    [[nodiscard]] int selectedCellCount() const override { return 0; }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override { return {}; }
    [[nodiscard]] QString columnDescription(int column) const override;
    [[nodiscard]] QString rowDescription(int) const override { return {}; }
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] int selectedRowCount() const override { return 0; }
    [[nodiscard]] int columnCount() const override;
    [[nodiscard]] int rowCount() const override;
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] QList<int> selectedRows() const override { return {}; }
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    [[nodiscard]] bool isRowSelected(int) const override { return false; }
    bool selectRow(int) override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectRow(int) override { return false; }
    bool unselectColumn(int) override { return false; }
    void modelChange(QAccessibleTableModelChangeEvent*) override {}
};

/// Where a cell is in its table.
class ReplyCellPlace : public QAccessibleTableCellInterface {
  public:
    [[nodiscard]] bool isSelected() const override { return false; }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override;
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
};

class ReplyCellElement final : public ReplyTextElement, public ReplyCellPlace {
  public:
    using ReplyTextElement::ReplyTextElement;

    void* interface_cast(QAccessible::InterfaceType type) override;
    [[nodiscard]] int columnIndex() const override { return part().column; }
    [[nodiscard]] int rowIndex() const override { return part().row; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }
};

/// What a short row lacks. Its part counts on from those of the block, row by row.
class ReplyBlankCell final : public ReplyElement, public ReplyCellPlace {
  public:
    using ReplyElement::ReplyElement;

    // QAccessibleInterface
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Cell; }
    void* interface_cast(QAccessible::InterfaceType type) override;

    // QAccessibleTableCellInterface
    [[nodiscard]] int columnIndex() const override;
    [[nodiscard]] int rowIndex() const override;
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

  protected:
    [[nodiscard]] QRectF placeInBlock() const override;

  private:
    [[nodiscard]] int index() const { return key().part - block().partCount(); }
};

} // namespace vorq
