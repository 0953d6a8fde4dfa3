#include "app/instance/PreviewSwitches.h"

#include "app/instance/LinkOutcomes.h"

using namespace Qt::StringLiterals;

namespace vorq {

PreviewSwitches::PreviewSwitches(const QDBusConnection& bus, QObject* object)
    : QDBusAbstractAdaptor(object), m_bus(bus) {}

QStringList PreviewSwitches::Open() {
    QStringList names;
    for (const Preview preview : allPreviews)
        if (m_previews && m_previews->isOn(preview)) names += previewNames.nameOf(preview);
    return names;
}

void PreviewSwitches::Switch(const QString& name, bool isOn, const QDBusMessage& message) {
    const auto outcome = apply(name, isOn);
    if (outcome) return;
    message.setDelayedReply(true);
    m_bus.send(message.createErrorReply(LinkOutcomes::failed, outcome.error()));
}

std::expected<void, QString> PreviewSwitches::apply(const QString& name, bool isOn) {
    const auto preview = previewNames.caseOf(QStringView(name));
    if (!preview) return std::unexpected(u"There is no preview %1."_s.arg(name));
    if (!m_previews) return std::unexpected(u"Vorq is about to end."_s);
    return m_previews->set(*preview, isOn);
}

} // namespace vorq
