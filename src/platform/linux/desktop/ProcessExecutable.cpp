#include "platform/linux/desktop/ProcessExecutable.h"

#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace vorq {

QString executableName(std::int32_t process) {
    const QString link = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(process));
    QString name = QFileInfo(link).fileName();
    // Of a program that was replaced while it runs.
    const QString deleted = u" (deleted)"_s;
    if (name.endsWith(deleted)) name.chop(deleted.size());
    return name;
}

} // namespace vorq
