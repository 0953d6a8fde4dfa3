#include "platform/linux/GraphicsProcessor.h"

#include <QDir>

#include <algorithm>

namespace vorq {
namespace {

bool isUsable(const QFileInfo& device) {
    return device.isReadable() && device.isWritable();
}

} // namespace

// Every kernel driver that can draw has a render node; that of NVIDIA may be without.
bool hasGraphicsProcessor(const QString& devices) {
    const QDir folder(devices + QStringLiteral("/dri"), QStringLiteral("renderD*"), QDir::Name,
                      QDir::Files | QDir::System);
    const QFileInfoList nodes = folder.entryInfoList();
    return std::ranges::any_of(nodes, isUsable) ||
           isUsable(QFileInfo(devices + QStringLiteral("/nvidiactl")));
}

} // namespace vorq
