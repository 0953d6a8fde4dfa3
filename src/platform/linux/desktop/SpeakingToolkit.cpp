#include "platform/linux/desktop/SpeakingToolkit.h"

#include <QFile>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// By the names of their libraries. Others, such as those of plain X11, never tell anything.
constexpr std::array libraries{"/libQt5Gui",     "/libQt6Gui", "/libgtk-3.", "/libgtk-4.",
                               "/libatk-bridge", "/libxul.so", "/libvcl"};

constexpr qint64 mostBytes = qint64{8} * 1024 * 1024;

} // namespace

bool hasSpeakingToolkit(std::int32_t process) {
    QFile maps(u"/proc/%1/maps"_s.arg(process));
    if (!maps.open(QIODevice::ReadOnly)) return false;
    const QByteArray loaded = maps.read(mostBytes);
    return std::ranges::any_of(libraries,
                               [&](const char* library) { return loaded.contains(library); });
}

} // namespace vorq
