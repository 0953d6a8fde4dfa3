#include "platform/linux/desktop/ProcessExecutable.h"

#include <QFile>
#include <QFileInfo>

namespace vorq {

QString executableName(std::int32_t process) {
    const QString link = QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(process));
    QString name = QFileInfo(link).fileName();
    // Of a program that was replaced while it runs.
    const QString deleted = QStringLiteral(" (deleted)");
    if (name.endsWith(deleted)) name.chop(deleted.size());
    return name;
}

} // namespace vorq
