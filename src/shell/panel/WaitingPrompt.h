#pragma once

#include <QObject>
#include <QString>

namespace vorq {

class AttachmentList;

/// A prompt that the user has sent while clips of it were loading. It goes out with all of them, or
/// not at all. Main thread only.
class WaitingPrompt final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isWaiting READ isWaiting NOTIFY changed)
    Q_PROPERTY(QString sentence READ sentence CONSTANT)

  public:
    /// The list must outlive this object.
    explicit WaitingPrompt(AttachmentList& clips);

    [[nodiscard]] bool isWaiting() const { return m_isWaiting; }
    /// What the prompt waits for.
    [[nodiscard]] static QString sentence();
    void wait();
    /// The prompt stays where it is.
    Q_INVOKABLE void cancel();

  signals:
    void changed();
    /// Nothing is loading any more, whether all are ready or some have failed.
    void loaded();
    void announced(const QString& sentence);

  private:
    void setWaiting(bool isWaiting);
    void lookLater();
    void look();

    AttachmentList& m_clips;
    bool m_isWaiting = false;
    bool m_isLookingLater = false;
};

} // namespace vorq
