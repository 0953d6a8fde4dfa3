#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QString>

#include <vector>

namespace vorq {

/// Tells another start of the program what became of a link that it handed over: the interface
/// com.vorq.desk.Links beside that of the application. Main thread only.
class LinkOutcomes final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.vorq.desk.Links")

  public:
    static inline const QString interface = QStringLiteral("com.vorq.desk.Links");
    static inline const QString failed = QStringLiteral("com.vorq.desk.Error.Failed");

    /// The object is the one that is on the bus.
    LinkOutcomes(const QDBusConnection& bus, QObject* object);

    /// A sign-in with the code of a link is under way.
    void began(const QString& code);

    /// It has come to its end: a sentence for the user, of success or of failure.
    void ended(const QString& code, bool hasSucceeded, const QString& sentence);

  public slots:
    /// Answered once the sign-in with the link's code has ended: by the sentence, or by an error
    /// with it; "" for a link that nobody signs in with here.
    QString Outcome(const QString& url, const QDBusMessage& message);

  private:
    struct SignIn {
        QString code;
        int underWay = 0; // the same link may be opened more than once
        bool hasSucceeded = false;
        QString sentence;
        QList<QDBusMessage> waiting;
    };

    [[nodiscard]] SignIn* find(const QString& code);
    void answer(const QDBusMessage& question, const SignIn& signIn) const;

    QDBusConnection m_bus;
    std::vector<SignIn> m_signIns; // the newest last
};

} // namespace vorq
