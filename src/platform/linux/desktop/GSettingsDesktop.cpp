#include "platform/linux/desktop/GSettingsDesktop.h"

#include "platform/linux/desktop/GtkTheme.h"
#include "platform/linux/desktop/ProgramRun.h"
#include "support/async/OnPool.h"

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString writerPath = u"/ca/desrt/dconf/Writer/user"_s;
const QString writerInterface = u"ca.desrt.dconf.Writer"_s;

constexpr const char* interfaceSchema = "org.gnome.desktop.interface";
constexpr const char* accessSchema = "org.gnome.desktop.a11y.interface";

constexpr std::chrono::milliseconds readLimit{10000};

struct Setting {
    const char* schema;
    const char* key;
};

constexpr Setting colorScheme{interfaceSchema, "color-scheme"};
constexpr Setting animations{interfaceSchema, "enable-animations"};
constexpr Setting textScaling{interfaceSchema, "text-scaling-factor"};
constexpr Setting widgetTheme{interfaceSchema, "gtk-theme"};
constexpr Setting highContrast{accessSchema, "high-contrast"};
constexpr std::array askedSettings{colorScheme, animations, textScaling, widgetTheme, highContrast};

using Values = QHash<QByteArray, QByteArray>;

QByteArray nameOf(const Setting& setting) {
    return QByteArray(setting.schema) + ' ' + setting.key;
}

QString pathOf(const Setting& setting) {
    return u'/' + QString::fromLatin1(setting.schema).replace(u'.', u'/') + u'/' +
           QLatin1StringView(setting.key);
}

std::optional<bool> switchOf(const Values& values, const Setting& setting) {
    const QByteArray value = values.value(nameOf(setting));
    if (value == "true") return true;
    if (value == "false") return false;
    return std::nullopt;
}

// Desktops without a switch for it have a theme.
std::optional<bool> contrastOf(const Values& values) {
    if (values.value(nameOf(widgetTheme)).startsWith("'HighContrast")) return true;
    return switchOf(values, highContrast);
}

std::optional<double> scaleOf(const Values& values) {
    bool isNumber = false;
    const double scale = values.value(nameOf(textScaling)).toDouble(&isNumber);
    return isNumber ? std::optional(scale) : std::nullopt;
}

std::optional<bool> darknessOf(const Values& values) {
    const QByteArray scheme = values.value(nameOf(colorScheme));
    if (scheme == "'prefer-dark'") return true;
    if (scheme == "'prefer-light'") return false;
    return std::nullopt;
}

// A line is a schema, a key and its value.
Values valuesIn(const QByteArray& listing) {
    Values values;
    for (const QByteArray& line : listing.split('\n'))
        for (const Setting& setting : askedSettings)
            if (const QByteArray name = nameOf(setting) + ' '; line.startsWith(name))
                values.insert(nameOf(setting), line.sliced(name.size()).trimmed());
    return values;
}

// Without the quotes of a text.
QString themeOf(const Values& values) {
    const QByteArray quoted = values.value(nameOf(widgetTheme));
    return quoted.size() < 2 ? QString() : QString::fromUtf8(quoted.sliced(1).chopped(1));
}

} // namespace

GSettingsDesktop::GSettingsDesktop(QDBusConnection bus) : m_bus(std::move(bus)) {
    m_bus.connect({}, writerPath, writerInterface, u"Notify"_s, this,
                  SLOT(settingsWritten(QString, QStringList, QString)));
    for (const char* schema : {interfaceSchema, accessSchema})
        read(QString::fromLatin1(schema));
}

void GSettingsDesktop::settingsWritten(const QString& prefix, const QStringList& keys,
                                       const QString&) {
    for (const Setting& setting : askedSettings) {
        const QString path = pathOf(setting);
        if (!path.startsWith(prefix)) continue;
        if (keys.isEmpty() || keys.contains(path.sliced(prefix.size())))
            read(QString::fromLatin1(setting.schema));
    }
}

// One that changes while it is read is read once more.
void GSettingsDesktop::read(const QString& schema) {
    const bool isReading = m_reading.isRunning();
    if (m_due.lastIndexOf(schema) >= (isReading ? 1 : 0)) return;
    m_due += schema;
    if (isReading) return;
    m_reading.restart([this](std::stop_token stop) { return readDue(this, std::move(stop)); });
}

QCoro::Task<> GSettingsDesktop::readDue(GSettingsDesktop* self, std::stop_token stop) {
    while (!stop.stop_requested() && !self->m_due.isEmpty()) {
        const QString schema = self->m_due.first();
        const auto list = [schema](const std::stop_token& stopped) {
            const auto listing =
                outputOf(u"gsettings"_s, {u"list-recursively"_s, schema}, readLimit, stopped);
            Stored stored{.values = valuesIn(listing.value_or(QByteArray()))};
            stored.selection = gtkThemeSelection(themeOf(stored.values), gtkThemeFolders());
            return stored;
        };
        const Stored stored = co_await onPool(list, stop);
        if (stop.stop_requested()) co_return;
        self->m_due.removeFirst();
        self->merge(schema.toLatin1(), stored);
    }
}

void GSettingsDesktop::merge(const QByteArray& schema, const Stored& stored) {
    for (const Setting& setting : askedSettings)
        if (schema == setting.schema) m_values.remove(nameOf(setting));
    m_values.insert(stored.values);
    if (schema == widgetTheme.schema) m_selection = stored.selection;
    const DesktopLook look{.prefersDark = darknessOf(m_values),
                           .allowsAnimations = switchOf(m_values, animations),
                           .wantsHighContrast = contrastOf(m_values),
                           .textScale = scaleOf(m_values),
                           .selection = m_selection};
    if (look == m_look) return;
    m_look = look;
    emit changed();
}

} // namespace vorq
