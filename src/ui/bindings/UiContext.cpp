#include "ui/bindings/UiContext.h"

#include "ui/native/Fonts.h"
#include "ui/native/ScreenReader.h"
#include "ui/native/accessible/ApplicationAccessible.h"
#include "ui/native/accessible/ItemAccessible.h"

#include <QGuiApplication>
#include <QJSEngine>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QStyleHints>

using namespace Qt::StringLiterals;

// Generated with the modules; named here so that the linker keeps them.
void qml_register_types_Vorq_Native();

namespace vorq {
namespace {

constexpr const char* contextProperty = "vorqUiContext";

} // namespace

void prepareUi() {
    Fonts::preferColourEmoji();
    ApplicationAccessible::install();
    ItemAccessible::install();
    ScreenReader::watch();
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
}

void UiContext::install(QQmlEngine& engine) {
    // Read by nobody, but an optimiser may not drop it.
    [[maybe_unused]] void (*volatile keep)() = &qml_register_types_Vorq_Native;
    engine.addImportPath(u"qrc:/qt/qml"_s);
    engine.setProperty(contextProperty, QVariant::fromValue<QObject*>(this));
}

UiContext* UiContext::create(QQmlEngine* engine, QJSEngine*) {
    auto* context =
        qobject_cast<UiContext*>(qvariant_cast<QObject*>(engine->property(contextProperty)));
    Q_ASSERT_X(context, "UiContext", "no context was installed in this engine");
    QJSEngine::setObjectOwnership(context, QJSEngine::CppOwnership);
    return context;
}

int UiContext::caretFlashTime() const {
    return QGuiApplication::styleHints()->cursorFlashTime();
}

double UiContext::points(double pixels) const {
    return Fonts::points(pixels);
}

} // namespace vorq
