#include "app/instance/ApplicationService.h"

#include <QDBusConnectionInterface>

using namespace Qt::StringLiterals;

namespace vorq {

ApplicationService::ApplicationService(const QDBusConnection& bus, QObject* parent)
    : QObject(parent), m_bus(bus) {}

ApplicationService::~ApplicationService() {
    if (!m_isOwner) return;
    m_bus.unregisterObject(path);
    m_bus.unregisterService(name);
}

bool ApplicationService::claim() {
    if (!m_bus.isConnected()) return false;
    // The object first: whoever sees the name may call at once.
    const auto exported = QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportAdaptors;
    if (!m_bus.registerObject(path, this, exported)) return false;
    const auto reply =
        m_bus.interface()->registerService(name, QDBusConnectionInterface::DontQueueService,
                                           QDBusConnectionInterface::DontAllowReplacement);
    m_isOwner = reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
    if (!m_isOwner) m_bus.unregisterObject(path);
    return m_isOwner;
}

void ApplicationService::Activate(const QVariantMap&) {
    QMetaObject::invokeMethod(this, &ApplicationService::activated, Qt::QueuedConnection);
}

void ApplicationService::Open(const QStringList& uris, const QVariantMap&) {
    QList<QUrl> urls;
    for (const QString& uri : uris)
        urls += QUrl(uri);
    QMetaObject::invokeMethod(
        this, [this, urls] { emit openRequested(urls); }, Qt::QueuedConnection);
}

void ApplicationService::ActivateAction(const QString& action, const QVariantList&,
                                        const QVariantMap& platformData) {
    const std::optional<Verb> verb = verbNamed(action);
    if (!verb) {
        if (calledFromDBus())
            sendErrorReply(QDBusError::InvalidArgs, u"There is no action %1."_s.arg(action));
        return;
    }
    VerbSource source;
    bool isNumber = false;
    const int process = platformData.value(sourceProcessKey).toInt(&isNumber);
    if (isNumber) source.process = process;
    const qlonglong given = platformData.value(givenKey).toLongLong(&isNumber);
    if (isNumber) source.given = std::chrono::milliseconds(given);
    QMetaObject::invokeMethod(
        this, [this, verb = *verb, source] { emit verbRequested(verb, source); },
        Qt::QueuedConnection);
}

} // namespace vorq
