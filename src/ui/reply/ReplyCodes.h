#pragma once

#include <QAbstractListModel>
#include <QRectF>

namespace vorq {

/// The blocks of code of a reply that are in or near what is in view, and the next ones above and
/// below, from the top. A row stays the same block for as long as it is there. Main thread only.
class ReplyCodes final : public QAbstractListModel {
    Q_OBJECT

  public:
    enum DataRole {
        NumberRole = Qt::UserRole + 1, ///< of the code among all code of the reply, from 0
        PlateRole,                     ///< its rectangle in the reply, in logical pixels
    };

    struct Code {
        int number = 0;
        QRectF plate;

        bool operator==(const Code&) const = default;
    };

    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] const QList<Code>& codes() const { return m_codes; }

    /// Of rising numbers without a gap.
    void setCodes(const QList<Code>& codes);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  private:
    void dropOutside(int first, int last);
    void addAt(int row, const QList<Code>& codes);

    QList<Code> m_codes;
};

} // namespace vorq
