#include "app/desktop/PanelRenderer.h"

#include "app/desktop/AppLog.h"

#include <QProcessEnvironment>
#include <QQuickWindow>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::array chosenByUser = {"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QSG_RHI_BACKEND"};

// As Mesa reads its variables.
bool isTrue(const QString& value) {
    static const QStringList yes = {"1", "y", "yes", "t", "true"};
    return yes.contains(value, Qt::CaseInsensitive);
}

} // namespace

bool wantsSoftwareRenderer(const QProcessEnvironment& environment, bool hasGraphicsProcessor) {
    const auto isSet = [&](const char* name) {
        return !environment.value(QLatin1StringView(name)).isEmpty();
    };
    if (std::ranges::any_of(chosenByUser, isSet)) return false;
    return !hasGraphicsProcessor || isTrue(environment.value(u"LIBGL_ALWAYS_SOFTWARE"_s));
}

void chooseRenderer(bool hasGraphicsProcessor) {
    if (!wantsSoftwareRenderer(QProcessEnvironment::systemEnvironment(), hasGraphicsProcessor))
        return;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    qCInfo(appLog, "Vorq: there is no graphics processor to draw with, so OpenGL is not used.");
}

} // namespace vorq
