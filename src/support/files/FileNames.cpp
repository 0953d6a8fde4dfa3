#include "support/files/FileNames.h"

#include <QDirIterator>

namespace vorq {

QStringList fileNames(const QString& folder, QLatin1StringView start, QLatin1StringView end,
                      QDir::Filters kinds) {
    QStringList names;
    for (QDirIterator entries(folder, kinds); entries.hasNext();) {
        const QString name = entries.nextFileInfo().fileName();
        if (name.size() >= start.size() + end.size() && name.startsWith(start) &&
            name.endsWith(end))
            names += name;
    }
    names.sort();
    return names;
}

} // namespace vorq
