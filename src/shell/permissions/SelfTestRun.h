#pragma once

#include "shell/permissions/SelfCheckList.h"

#include <QObject>
#include <QPointer>

#include <functional>

namespace vorq {

class SelfTest;

/// The self-test as a window runs it and follows it, also where a command has begun it. Main thread
/// only.
class SelfTestRun final : public QObject {
    Q_OBJECT
    Q_PROPERTY(vorq::SelfCheckList* checks READ checks CONSTANT)
    Q_PROPERTY(bool isTesting READ isTesting NOTIFY changed)
    /// Checks that were made, of how many.
    Q_PROPERTY(int finished READ finished NOTIFY changed)
    Q_PROPERTY(int total READ total NOTIFY changed)
    /// What came of the last test; "" while one runs, and before the first.
    Q_PROPERTY(QString outcome READ outcome NOTIFY changed)
    Q_PROPERTY(bool hasFailures READ hasFailures NOTIFY changed)
    /// All checks were made, and none failed.
    Q_PROPERTY(bool hasPassed READ hasPassed NOTIFY changed)

  public:
    /// Gives the test, which is made when it is first wanted. It must outlive the run.
    using Provide = std::function<SelfTest&()>;

    explicit SelfTestRun(Provide provide) : m_provide(std::move(provide)) {}

    [[nodiscard]] SelfCheckList* checks() { return &m_checks; }
    [[nodiscard]] bool isTesting() const { return m_isTesting; }
    [[nodiscard]] int finished() const { return m_checks.finished(); }
    [[nodiscard]] int total() const { return m_checks.rowCount(); }
    [[nodiscard]] QString outcome() const;
    [[nodiscard]] bool hasFailures() const { return failures() > 0; }
    [[nodiscard]] bool hasPassed() const;

    /// Joins a test that runs already.
    void follow();

    Q_INVOKABLE void start();
    /// Ends it soon.
    Q_INVOKABLE void cancel();
    /// The window closes. A test that a command has begun goes on.
    void leave();

  signals:
    void changed();

  private:
    void join();
    [[nodiscard]] int failures() const;
    void setTesting(bool isTesting);

    Provide m_provide;
    QPointer<SelfTest> m_test;
    SelfCheckList m_checks;
    bool m_isTesting = false;
    bool m_isOurs = false;
};

} // namespace vorq
