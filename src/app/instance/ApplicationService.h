#pragma once

#include "app/cli/CommandLine.h"
#include "app/instance/LinkOutcomes.h"
#include "app/instance/PreviewSwitches.h"
#include "app/instance/SelfTestService.h"
#include "platform/Clock.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QUrl>
#include <QVariantMap>

#include <cstdint>
#include <optional>

namespace vorq {

/// What a command was given with, beside its name.
struct VerbSource {
    /// The process whose window was in front; nothing if unknown.
    std::optional<std::int32_t> process;
    /// When, by the clock of the machine; nothing if unknown.
    std::optional<Clock::Duration> given;

    bool operator==(const VerbSource&) const = default;
};

/// How other starts of the program reach the one that runs: the interface
/// org.freedesktop.Application of the name com.vorq.desk on the session bus. Main thread only.
class ApplicationService final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    static inline const QString name = QStringLiteral("com.vorq.desk");
    static inline const QString path = QStringLiteral("/com/vorq/desk");
    static inline const QString interface = QStringLiteral("org.freedesktop.Application");
    /// Where a command carries the process whose window was in front.
    static inline const QString sourceProcessKey = QStringLiteral("com.vorq.desk.source-process");
    /// Where it carries when it was given, in milliseconds.
    static inline const QString givenKey = QStringLiteral("com.vorq.desk.given");

    explicit ApplicationService(const QDBusConnection& bus, QObject* parent = nullptr);
    ~ApplicationService() override;

    /// What became of the links that came by openRequested().
    [[nodiscard]] LinkOutcomes& links() { return m_links; }

    /// By which other starts of the program switch previews.
    [[nodiscard]] PreviewSwitches& previewSwitches() { return m_previewSwitches; }

    /// By which they have this one test itself.
    [[nodiscard]] SelfTestService& selfTests() { return m_selfTests; }

    /// Makes this process the one that runs. False if another is, or there is no bus. Calls are
    /// answered from the event loop on.
    [[nodiscard]] bool claim();

  public slots:
    // The interface. What is asked for happens after the answer.
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(const QString& action, const QVariantList& parameter,
                                     const QVariantMap& platformData);

  signals:
    void activated();
    void openRequested(const QList<QUrl>& urls);
    void verbRequested(vorq::Verb verb, vorq::VerbSource source);

  private:
    QDBusConnection m_bus;
    LinkOutcomes m_links{m_bus, this};
    PreviewSwitches m_previewSwitches{m_bus, this};
    SelfTestService m_selfTests{m_bus, this};
    bool m_isOwner = false;
};

} // namespace vorq
