#include "ui/native/Fonts.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace vorq::Fonts {
namespace {

constexpr double pointsPerInch = 72;
constexpr double defaultDotsPerInch = 96;
constexpr double largeSize = 16;
constexpr double displaySize = 19;
constexpr double largeTracking = -0.18;
constexpr double displayTracking = -0.3;

QString installed(const QString& family, QFontDatabase::SystemFont otherwise) {
    if (QFontDatabase::hasFamily(family)) return family;
    return QFontDatabase::systemFont(otherwise).family();
}

} // namespace

void preferColourEmoji() {
    const QString emoji = u"Noto Color Emoji"_s;
    for (const char* family : {"Inter", "Inter Display", "JetBrains Mono"})
        QFont::insertSubstitution(QString::fromLatin1(family), emoji);
}

double points(double pixels) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double density = screen ? screen->logicalDotsPerInch() : defaultDotsPerInch;
    return pixels * pointsPerInch / density;
}

QFont sans(double pixels, QFont::Weight weight) {
    static const QString text = installed(u"Inter"_s, QFontDatabase::GeneralFont);
    static const QString display = installed(u"Inter Display"_s, QFontDatabase::GeneralFont);
    QFont font(pixels >= displaySize ? display : text);
    font.setPointSizeF(points(pixels));
    font.setWeight(weight);
    if (pixels >= displaySize)
        font.setLetterSpacing(QFont::AbsoluteSpacing, displayTracking);
    else if (pixels >= largeSize)
        font.setLetterSpacing(QFont::AbsoluteSpacing, largeTracking);
    return font;
}

QFont mono(double pixels, QFont::Weight weight) {
    static const QString family = installed(u"JetBrains Mono"_s, QFontDatabase::FixedFont);
    QFont font(family);
    font.setPointSizeF(points(pixels));
    font.setWeight(weight);
    // Two characters of code never become one sign.
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

} // namespace vorq::Fonts
