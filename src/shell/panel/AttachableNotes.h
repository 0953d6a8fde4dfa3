#pragma once

#include "support/async/TaskSlot.h"

#include <QAbstractListModel>
#include <QCoroTask>
#include <QHash>
#include <QSet>
#include <QString>
#include <QUuid>

#include <optional>
#include <stop_token>
#include <vector>

namespace vorq {

class AttachmentList;
class VorqAppState;
struct AppleNoteSummary;

/// The notes that can be attached to a prompt: those of the library, and after them those of the
/// user's notes application. A note is ticked as long as it is among the attachments. Main
/// thread only.
class AttachableNotes final : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(bool appleNotesLoading READ appleNotesLoading NOTIFY appleNotesLoadingChanged)

  public:
    enum DataRole {
        TitleRole = Qt::UserRole + 1,
        DetailRole,  ///< how the note goes on, or where it is kept
        CheckedRole, ///< whether it is attached
    };

    /// Both must outlive this object.
    AttachableNotes(VorqAppState& state, AttachmentList& attachments);
    /// Lists the notes anew: those of the library at once, the others as they come.
    void load();

    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] bool appleNotesLoading() const { return m_appleNotesLoading; }

    /// Attaches the note, or takes it off again. A note of the notes application is read first; one
    /// that cannot be read is told by noteUnreadable(). A row that is none changes nothing.
    Q_INVOKABLE void toggle(int row);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    void countChanged();
    void appleNotesLoadingChanged();
    void noteUnreadable(const QString& title);

  private:
    struct Row {
        QString title;
        QString detail;
        std::optional<QUuid> noteID; ///< of a note of the library
        QString appleNoteID;         ///< else the notes application's own
    };

    void listLibrary();
    void listAppleNotes(const std::vector<AppleNoteSummary>& notes);
    void setAppleNotesLoading(bool isLoading);
    [[nodiscard]] bool isAttached(const Row& row) const;
    void toggleLibraryNote(const Row& row);
    void toggleAppleNote(const Row& row);
    static QCoro::Task<> listFromApplication(AttachableNotes* self, std::stop_token stop);
    static QCoro::Task<> readNote(AttachableNotes* self, QString id, QString title,
                                  std::stop_token stop);
    void attachAppleNote(const QString& id, const QString& title,
                         const std::optional<QString>& body);
    void forgetDetached();

    VorqAppState& m_state;
    AttachmentList& m_attachments;
    std::vector<Row> m_rows;
    bool m_appleNotesLoading = false;
    QHash<QString, QUuid> m_appleNoteClipIDs; // of the attachments, by the note's identity
    QSet<QString> m_awaited;                  // notes that are being read
    TaskSlot m_listing;
    TaskSlot m_reading; // of all notes that are awaited, the latest in the slot
};

} // namespace vorq
