#pragma once

#include "shell/selftest/SelfCheck.h"

#include <QAbstractListModel>

#include <optional>
#include <vector>

namespace vorq {

/// The checks of the self-test as a window lists them, in the user's language: those that were made
/// and those that wait. Main thread only.
class SelfCheckList : public QAbstractListModel {
    Q_OBJECT

  public:
    /// "verdict" is the state as selfCheckStates has it, "running", or "waiting"; "details" is a
    /// list of texts. What was not made has no sentence.
    enum Role { TitleRole = Qt::UserRole + 1, VerdictRole, SentenceRole, AdviceRole, DetailsRole };

    using QAbstractListModel::QAbstractListModel;

    /// All of them wait, but for the first, which runs.
    void begin(const QStringList& ids);
    /// The next one runs, if there is any.
    void finishCheck(const SelfCheck& result);
    /// None runs any more.
    void end();

    [[nodiscard]] int finished() const { return m_finished; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  private:
    struct Row {
        QString id;
        std::optional<SelfCheck> result;
    };

    void setRows(const QStringList& ids);
    [[nodiscard]] QString verdictOf(int number) const;

    std::vector<Row> m_rows;
    int m_finished = 0; // the first rows
    bool m_isRunning = false;
};

} // namespace vorq
