#include "platform/linux/GSettingsDesktop.h"

#include <utility>

namespace vorq {
namespace {

const QString writerPath = QStringLiteral("/ca/desrt/dconf/Writer/user");
const QString writerInterface = QStringLiteral("ca.desrt.dconf.Writer");
const QString schemeKey = QStringLiteral("/org/gnome/desktop/interface/color-scheme");

constexpr int endLimit = 200; // milliseconds

} // namespace

GSettingsDesktop::GSettingsDesktop(QDBusConnection bus) : m_bus(std::move(bus)) {
    m_bus.connect({}, writerPath, writerInterface, QStringLiteral("Notify"), this,
                  SLOT(settingsWritten(QString, QStringList, QString)));
    m_reader.setStandardInputFile(QProcess::nullDevice());
    m_reader.setStandardErrorFile(QProcess::nullDevice());
    connect(&m_reader, &QProcess::finished, this, &GSettingsDesktop::handleEnd);
    read();
}

GSettingsDesktop::~GSettingsDesktop() {
    m_reader.disconnect(this);
    if (m_reader.state() == QProcess::NotRunning) return;
    m_reader.kill();
    m_reader.waitForFinished(endLimit);
}

void GSettingsDesktop::settingsWritten(const QString& prefix, const QStringList& keys,
                                       const QString&) {
    if (!schemeKey.startsWith(prefix)) return;
    const QString rest = schemeKey.sliced(prefix.size());
    if (keys.isEmpty() || keys.contains(rest)) read();
}

void GSettingsDesktop::read() {
    if (m_reader.state() != QProcess::NotRunning) {
        m_isReadDue = true;
        return;
    }
    m_reader.start(QStringLiteral("gsettings"),
                   {QStringLiteral("get"), QStringLiteral("org.gnome.desktop.interface"),
                    QStringLiteral("color-scheme")});
}

void GSettingsDesktop::handleEnd() {
    const QByteArray answer = m_reader.readAllStandardOutput();
    DesktopLook look = m_look;
    look.prefersDark = std::nullopt;
    if (answer.contains("prefer-dark")) look.prefersDark = true;
    if (answer.contains("prefer-light")) look.prefersDark = false;
    if (std::exchange(m_isReadDue, false)) read();
    if (look == m_look) return;
    m_look = look;
    emit changed();
}

} // namespace vorq
