#pragma once

#include "platform/PortSupport.h"
#include "shell/permissions/PermissionRows.h"
#include "shell/permissions/SelfTestRun.h"
#include "support/async/TaskSlot.h"

#include <QCoroTask>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <stop_token>

namespace vorq {

class Clock;
class Defaults;
class Permissions;
class PrivacySettings;

/// What the walkthrough shows: the request to let Vorq read other applications; once that is
/// granted, which programs are to be started again; and the self-test. Main thread only.
class Walkthrough final : public QObject {
    Q_OBJECT
    Q_PROPERTY(vorq::Walkthrough::Page page READ page NOTIFY changed)
    Q_PROPERTY(QString applicationName READ applicationName CONSTANT)
    Q_PROPERTY(vorq::PermissionRows* permissions READ permissions CONSTANT)
    /// The user has agreed, and the system has not answered yet.
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY changed)
    /// Why it cannot be granted, or was not; "" for nothing.
    Q_PROPERTY(QString problem READ problem NOTIFY changed)
    Q_PROPERTY(bool canAsk READ canAsk NOTIFY changed)
    /// That are to be started again, once it is granted.
    Q_PROPERTY(QStringList programs READ programs NOTIFY changed)
    /// The programs are not known yet.
    Q_PROPERTY(bool isLooking READ isLooking NOTIFY changed)
    Q_PROPERTY(vorq::SelfTestRun* selfTest READ selfTest CONSTANT)

  public:
    enum class Page { Request, Granted, Checks, Help };
    Q_ENUM(Page)

    /// That it has come by itself once.
    static inline const QString shownKey = QStringLiteral("vorq.didShowAccessibilityWalkthrough");
    /// How long the system may take to grant what it was asked for.
    static constexpr std::chrono::milliseconds answerLimit{3000};
    /// Before it comes by itself: by then the system has told what is granted already.
    static constexpr std::chrono::milliseconds offerDelay{2000};
    /// While the user closes programs and starts them again.
    static constexpr std::chrono::milliseconds lookInterval{2000};

    /// All must outlive this object.
    struct Services {
        Clock& clock;
        Defaults& defaults;
        Permissions& permissions;
        PrivacySettings& privacy;
        SelfTestRun::Provide selfTest;
        QString applicationName;
    };

    explicit Walkthrough(Services services);
    ~Walkthrough() override;

    [[nodiscard]] Page page() const { return m_page; }
    [[nodiscard]] const QString& applicationName() const { return m_services.applicationName; }
    [[nodiscard]] PermissionRows* permissions() { return &m_rows; }
    [[nodiscard]] bool isAsking() const { return m_isAsking; }
    [[nodiscard]] QString problem() const;
    [[nodiscard]] bool canAsk() const;
    [[nodiscard]] const QStringList& programs() const { return m_programs; }
    [[nodiscard]] bool isLooking() const { return m_isLooking; }
    [[nodiscard]] SelfTestRun* selfTest() { return &m_selfTest; }

    /// Shows it in the first run for the user, unless access is granted already.
    void offerInFirstRun();
    /// Begins with the request, or with what comes after it if that is granted.
    void begin();

    /// Takes note of what is allowed now, and which programs have been started again.
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void openSystemSettings();
    Q_INVOKABLE void deny();
    /// The user is done with it. Whoever closes the request denies it.
    Q_INVOKABLE void close();
    Q_INVOKABLE void showSelfTest();
    Q_INVOKABLE void showHelp();
    /// From the self-test to the permission, and from the help to what it helps with.
    Q_INVOKABLE void goBack();

  signals:
    void changed();

  private:
    [[nodiscard]] bool isGranted() const;
    void showPage(Page page);
    void showPermission();
    void followPermission();
    void endAsking(bool isRefused);
    void lookForPrograms();
    static QCoro::Task<> awaitAnswer(QPointer<Walkthrough> self, std::stop_token stop);
    static QCoro::Task<> findPrograms(QPointer<Walkthrough> self, std::stop_token stop);
    static QCoro::Task<> offer(QPointer<Walkthrough> self, std::stop_token stop);

    Services m_services;
    PermissionRows m_rows;
    SelfTestRun m_selfTest;
    Page m_page = Page::Request;
    Page m_helped = Page::Request; // the page behind the help
    QStringList m_programs;
    bool m_isLooking = false;
    bool m_isAsking = false;
    bool m_wasRefused = false;
    TaskSlot m_finding;
    TaskSlot m_asking;
    TaskSlot m_offering;
};

} // namespace vorq
