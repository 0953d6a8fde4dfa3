#include "platform/linux/desktop/GtkTheme.h"

#include "platform/linux/desktop/XdgPaths.h"

#include <QByteArray>
#include <QColor>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qint64 sheetLimit = 4 << 20;
constexpr int mostAliases = 8;

struct BuiltInTheme {
    QLatin1StringView name;
    LookColor selection;
};

// They come with GTK and have no files.
constexpr LookColor adwaitaBlue{.red = 0x35 / 255.0, .green = 0x84 / 255.0, .blue = 0xe4 / 255.0};
constexpr LookColor adwaitaDarkBlue{
    .red = 0x15 / 255.0, .green = 0x53 / 255.0, .blue = 0x9e / 255.0};
constexpr std::array builtInThemes{BuiltInTheme{"Adwaita"_L1, adwaitaBlue},
                                   BuiltInTheme{"Adwaita-dark"_L1, adwaitaDarkBlue}};

QByteArray beginningOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(sheetLimit) : QByteArray();
}

std::optional<LookColor> hexColor(QByteArrayView text) {
    const QColor color(QString::fromLatin1(text));
    if (!text.startsWith('#') || !color.isValid()) return std::nullopt;
    return LookColor{
        .red = color.red() / 255.0, .green = color.green() / 255.0, .blue = color.blue() / 255.0};
}

// What stands between the end of a name, where it occurs last, and the end of its value.
QByteArray lastValue(const QByteArray& sheet, const QByteArray& name, const char* ends) {
    const qsizetype at = sheet.lastIndexOf(name);
    if (at < 0) return {};
    const QByteArray rest = sheet.sliced(at + name.size());
    const auto end = std::ranges::find_first_of(rest, std::string_view(ends));
    return rest.first(end - rest.cbegin()).trimmed();
}

// A colour with a name may stand for another.
std::optional<LookColor> selectionOfSheet(const QByteArray& sheet) {
    QByteArray name = "theme_selected_bg_color";
    for (int alias = 0; alias < mostAliases; ++alias) {
        const QByteArray value = lastValue(sheet, "@define-color " + name + ' ', ";");
        if (!value.startsWith('@')) return hexColor(value);
        name = value.sliced(1);
    }
    return std::nullopt;
}

// The line ends in the file are those of a string: a backslash and a letter.
std::optional<LookColor> selectionOfScheme(const QByteArray& settings) {
    return hexColor(lastValue(settings, "selected_bg_color:", "\"\\;\n"));
}

} // namespace

std::optional<LookColor> gtkThemeSelection(const QString& theme, const QStringList& themeFolders) {
    if (theme.isEmpty() || theme.contains(u'/') || theme.startsWith(u'.')) return std::nullopt;
    for (const QString& folder : themeFolders) {
        const QString path = folder + u'/' + theme;
        if (const auto color = selectionOfSheet(beginningOf(path + u"/gtk-3.0/gtk.css"_s)))
            return color;
        // Sheets that are compiled into one file cannot be read, but the settings of GTK 2 that
        // come with them can.
        if (const auto color = selectionOfScheme(beginningOf(path + u"/gtk-2.0/gtkrc"_s)))
            return color;
    }
    for (const BuiltInTheme& builtIn : builtInThemes)
        if (theme == builtIn.name) return builtIn.selection;
    return std::nullopt;
}

QStringList gtkThemeFolders() {
    QStringList folders{userHome() + u"/.themes"_s};
    for (const QString& data :
         QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation))
        folders += data + u"/themes"_s;
    return folders;
}

} // namespace vorq
