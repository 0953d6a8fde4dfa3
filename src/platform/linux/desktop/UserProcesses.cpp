#include "platform/linux/desktop/UserProcesses.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace vorq {

void endUserProcesses(const QStringList& words) {
    const QByteArray wanted = words.join(QChar(u'\0')).toUtf8() + '\0';
    for (const QString& name : QDir(u"/proc"_s).entryList(QDir::Dirs)) {
        bool isProcess = false;
        const int process = name.toInt(&isProcess);
        if (!isProcess || process == ::getpid()) continue;
        const QString folder = u"/proc/"_s + name;
        if (QFileInfo(folder).ownerId() != ::getuid()) continue;
        QFile commandLine(folder + u"/cmdline"_s);
        if (!commandLine.open(QIODevice::ReadOnly)) continue;
        if (commandLine.readAll().startsWith(wanted)) ::kill(process, SIGTERM);
    }
}

} // namespace vorq
