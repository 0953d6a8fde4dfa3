#pragma once

#include <QObject>
#include <QUuid>

#include <functional>
#include <optional>

namespace vorq {

/// The note that the panel studies, and the latest reply about it. Main thread only.
class StudyContext final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isStudyingNote READ isStudyingNote NOTIFY activeNoteChanged)
    Q_PROPERTY(QString lastStudyResearch READ lastStudyResearch NOTIFY lastStudyResearchChanged)

  public:
    /// Nothing while no note is studied.
    [[nodiscard]] std::optional<QUuid> activeStudyNoteID() const { return m_activeStudyNoteID; }

    [[nodiscard]] bool isStudyingNote() const { return m_activeStudyNoteID.has_value(); }

    /// What the active note is read as; nothing if there is none or it is no longer found.
    [[nodiscard]] std::optional<QString> activeStudySource() const;

    [[nodiscard]] const QString& lastStudyResearch() const { return m_lastStudyResearch; }
    /// The text of the note as it was loaded; "" for a note that was not.
    [[nodiscard]] const QString& studyNoteOriginalBody() const { return m_originalBody; }

    /// How a note is found: what it is read as, or nothing for an id that no note has.
    using NoteLookup = std::function<std::optional<QString>(const QUuid&)>;
    void setNoteLookup(NoteLookup lookup) { m_lookup = std::move(lookup); }

    void setActiveNote(const QUuid& id, const QString& originalBody);
    /// Another note without anything else being loaded.
    void setActiveStudyNoteID(const QUuid& id);
    void clearActiveStudyNote();
    void setLastStudyResearch(const QString& text);

  signals:
    void activeNoteChanged();
    void lastStudyResearchChanged();

  private:
    std::optional<QUuid> m_activeStudyNoteID;
    NoteLookup m_lookup;
    QString m_lastStudyResearch;
    QString m_originalBody;
};

} // namespace vorq
