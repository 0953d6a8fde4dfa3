#include "shell/permissions/SelfCheckTitles.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <string_view>

namespace vorq {
namespace {

struct TitleRow {
    std::string_view id;
    const char* title;
};

constexpr std::array titleRows = {
    TitleRow{"session", QT_TRANSLATE_NOOP("SelfTest", "Session")},
    TitleRow{"accessibility", QT_TRANSLATE_NOOP("SelfTest", "Accessibility")},
    TitleRow{"programs", QT_TRANSLATE_NOOP("SelfTest", "Running programs")},
    TitleRow{"portal", QT_TRANSLATE_NOOP("SelfTest", "Desktop portal")},
    TitleRow{"tray", QT_TRANSLATE_NOOP("SelfTest", "Tray")},
    TitleRow{"notes", QT_TRANSLATE_NOOP("SelfTest", "Notes")},
    TitleRow{"backend", QT_TRANSLATE_NOOP("SelfTest", "Backend")},
    TitleRow{"account", QT_TRANSLATE_NOOP("SelfTest", "Account")},
    TitleRow{"provider", QT_TRANSLATE_NOOP("SelfTest", "Language model")},
    TitleRow{"window", QT_TRANSLATE_NOOP("SelfTest", "Test window")},
    TitleRow{"capture-accessibility", QT_TRANSLATE_NOOP("SelfTest", "Capture by accessibility")},
    TitleRow{"capture-primary", QT_TRANSLATE_NOOP("SelfTest", "Capture of what is highlighted")},
    TitleRow{"capture-copy", QT_TRANSLATE_NOOP("SelfTest", "Capture by copying")},
    TitleRow{"replacement", QT_TRANSLATE_NOOP("SelfTest", "Replacing text")},
    TitleRow{"hot-keys", QT_TRANSLATE_NOOP("SelfTest", "Hot keys")},
};

} // namespace

QString selfCheckTitle(const QString& id) {
    const auto row = std::ranges::find(titleRows, id.toStdString(), &TitleRow::id);
    return row == titleRows.end() ? id : QCoreApplication::translate("SelfTest", row->title);
}

} // namespace vorq
