#include "platform/linux/desktop/GraphicsProcessor.h"

#include "support/files/FileNames.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

bool isUsable(const QString& path) {
    const QFileInfo device(path);
    return device.isReadable() && device.isWritable();
}

} // namespace

// Every kernel driver that can draw has a render node; that of NVIDIA may be without.
bool hasGraphicsProcessor(const QString& devices) {
    const QString folder = devices + u"/dri"_s;
    const QStringList nodes = fileNames(folder, "renderD"_L1, {}, QDir::System | QDir::Files);
    return std::ranges::any_of(
               nodes, [&](const QString& name) { return isUsable(folder + u'/' + name); }) ||
           isUsable(devices + u"/nvidiactl"_s);
}

} // namespace vorq
