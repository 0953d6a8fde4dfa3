#include "platform/linux/LinuxPermissionProbe.h"

#include "platform/linux/desktop/SessionKind.h"
#include "platform/linux/x11/X11Connection.h"
#include "support/files/FileNames.h"

#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

PermissionState grantedIf(bool is) {
    return is ? PermissionState::Granted : PermissionState::Pending;
}

bool isOpenToUs(const QString& path) {
    return ::access(QFile::encodeName(path).constData(), R_OK) == 0;
}

} // namespace

PermissionState LinuxPermissionProbe::textCapture() const {
    return grantedIf(m_accessibility.isTrusted());
}

PermissionState LinuxPermissionProbe::screen() const {
    return grantedIf(sessionKind() == SessionKind::X11 && X11Connection().isUsable());
}

PermissionState LinuxPermissionProbe::microphone() const {
    // Card, device, and the direction of capture: "pcmC0D0c".
    const QStringList devices =
        fileNames(m_soundFolder, "pcmC"_L1, "c"_L1, QDir::System | QDir::Files);
    return grantedIf(std::ranges::any_of(
        devices, [&](const QString& name) { return isOpenToUs(m_soundFolder + u'/' + name); }));
}

QString LinuxPermissionProbe::privacyListName() const {
    return u"Vorq"_s;
}

QString LinuxPermissionProbe::processPath() const {
    const QString path = QCoreApplication::applicationFilePath();
    if (!path.isEmpty()) return path;
    return QCoreApplication::arguments().value(0, u"vorq"_s);
}

} // namespace vorq
