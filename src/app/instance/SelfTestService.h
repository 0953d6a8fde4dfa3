#pragma once

#include "shell/selftest/PrivateWords.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QPointer>

#include <functional>
#include <optional>
#include <vector>

namespace vorq {

class SelfTest;

/// Lets another start of the program have this one test itself: the interface
/// com.vorq.desk.SelfTest beside that of the application. Main thread only.
class SelfTestService final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.vorq.desk.SelfTest")

  public:
    static inline const QString interface = QStringLiteral("com.vorq.desk.SelfTest");

    /// The error of a test that does not begin because one runs already.
    static inline const QString busy = QStringLiteral("com.vorq.desk.Error.Busy");

    /// The object is the one that is on the bus.
    SelfTestService(const QDBusConnection& bus, QObject* object);

    /// Gives the test, which is made when it is first wanted.
    using Provide = std::function<SelfTest&()>;
    /// What must not be told, as it is when it is asked for.
    using Secrets = std::function<PrivateWords()>;

    /// Whose tests are run from now on, until it goes.
    void serve(QObject& owner, Provide provide, Secrets secrets);

  public slots:
    /// Begins a test, which ends with the caller. Answered by an error with a sentence if one runs
    /// already.
    void Begin(const QDBusMessage& message);

    /// Answered once the check of that number, counted from 0, has been made: by its result as
    /// JSON; "" at the end of the test, an error at that of one that was cut short.
    QByteArray Next(int number, const QDBusMessage& message);

  private:
    struct Question {
        int number = 0;
        QDBusMessage message;
    };

    [[nodiscard]] SelfTest* wantedTest();
    void answerAll();
    [[nodiscard]] bool canAnswer(int number) const;
    /// Nothing for a check that will not be made.
    [[nodiscard]] std::optional<QByteArray> answerTo(int number) const;
    void answer(const Question& question) const;
    void refuse(const QDBusMessage& message, const QString& error, const QString& sentence) const;

    QDBusConnection m_bus;
    QDBusServiceWatcher m_caller;
    QPointer<QObject> m_owner;
    Provide m_provide;
    QPointer<SelfTest> m_test;
    Secrets m_secrets;
    std::vector<Question> m_waiting;
};

} // namespace vorq
