#pragma once

#include "capture/attachments/AttachmentReader.h"
#include "support/async/TaskSlot.h"

#include <QAbstractListModel>
#include <QCoroTask>
#include <QHash>
#include <QString>
#include <QUuid>

#include <optional>
#include <stop_token>
#include <vector>

namespace vorq {

class AttachmentList;
class ClipLoader;
class VorqAppState;
struct AppleNoteSummary;

/// The notes that can be attached to a prompt and that a search leaves: those of the library, and
/// after them those of the user's notes application. A note is ticked as long as it is among the
/// attachments. Main thread only.
class AttachableNotes final : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    /// Whatever the search leaves of them.
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY countChanged)
    Q_PROPERTY(bool appleNotesLoading READ appleNotesLoading NOTIFY appleNotesLoadingChanged)
    /// Those are left that hold each of its words in the title or the line below.
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)

  public:
    enum DataRole {
        TitleRole = Qt::UserRole + 1,
        DetailRole,  ///< how the note goes on, or where it is kept
        CheckedRole, ///< whether it is attached
    };

    /// All must outlive this object.
    AttachableNotes(VorqAppState& state, AttachmentList& attachments, ClipLoader& clips);
    /// Lists the notes anew, without a search: those of the library at once, the others as they
    /// come.
    Q_INVOKABLE void load();

    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] bool isEmpty() const { return m_all.empty(); }
    [[nodiscard]] bool appleNotesLoading() const { return m_appleNotesLoading; }
    [[nodiscard]] const QString& search() const { return m_search; }
    void setSearch(const QString& search);

    /// Attaches the note, or takes it off again. A note of the notes application is read while its
    /// clip is loading. A row that is none changes nothing.
    Q_INVOKABLE void toggle(int row);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    void countChanged();
    void appleNotesLoadingChanged();
    void searchChanged();

  private:
    struct Row {
        QString title;
        QString detail;
        std::optional<QUuid> noteID; ///< of a note of the library
        QString appleNoteID;         ///< else the notes application's own
        bool isChecked = false;
    };
    struct Roles;

    void listLibrary();
    void listAppleNotes(const std::vector<AppleNoteSummary>& notes);
    void setAppleNotesLoading(bool isLoading);
    void showFound();
    [[nodiscard]] bool isFound(const Row& row) const;
    [[nodiscard]] bool isAttached(const Row& row) const;
    void toggleLibraryNote(const Row& row);
    void toggleAppleNote(const Row& row);
    static QCoro::Task<> listFromApplication(AttachableNotes* self, std::stop_token stop);
    void followClips();

    VorqAppState& m_state;
    AttachmentList& m_attachments;
    ClipLoader& m_clips;
    std::vector<Row> m_all;
    std::vector<Row> m_rows; // of all, those that are found
    QString m_search;
    bool m_appleNotesLoading = false;
    QHash<QString, QUuid> m_appleNoteClipIDs; // of the clips, by the note's identity
    TaskSlot m_listing;
};

} // namespace vorq
