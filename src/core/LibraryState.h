#pragma once

#include <QObject>
#include <QString>

namespace vorq {

/// The library area: the outcome of the last library action, as a line for the user.
/// Main thread only.
class LibraryState final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString libraryMessage READ libraryMessage WRITE setLibraryMessage NOTIFY
                   libraryMessageChanged)

  public:
    [[nodiscard]] const QString& libraryMessage() const { return m_message; }
    void setLibraryMessage(const QString& message) {
        if (m_message == message) return;
        m_message = message;
        emit libraryMessageChanged();
    }

  signals:
    void libraryMessageChanged();

  private:
    QString m_message;
};

} // namespace vorq
