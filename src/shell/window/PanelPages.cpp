#include "shell/window/PanelPages.h"

#include "shell/notices/ShellLog.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlIncubationController>
#include <QQuickItem>
#include <QQuickView>

namespace vorq {
namespace {

constexpr int sliceMilliseconds = 4;

} // namespace

PanelPages::~PanelPages() {
    QQmlIncubator::clear();
    delete m_component;
}

bool PanelPages::loadFurther() {
    if (m_isDone) return false;
    if (m_component == nullptr)
        m_component = new QQmlComponent(m_view.engine(), m_source, QQmlComponent::Asynchronous);
    if (m_component->isLoading()) return true;
    if (m_component->isReady() && isNull()) m_component->create(*this);
    if (isLoading()) m_view.engine()->incubationController()->incubateFor(sliceMilliseconds);
    if (isLoading()) return true;
    finish();
    return false;
}

void PanelPages::finish() {
    if (std::exchange(m_isDone, true)) return;
    if (isLoading()) forceCompletion();
    if (isReady())
        handOver();
    else
        loadAtOnce();
    for (const QQmlError& error : m_view.errors())
        qCCritical(shellLog, "Vorq: the panel does not load: %s", qUtf8Printable(error.toString()));
}

void PanelPages::handOver() {
    m_view.setContent(m_source, std::exchange(m_component, nullptr), object());
    QQmlIncubator::clear();
}

// What the background has begun is used; what is wrong is found again.
void PanelPages::loadAtOnce() {
    QQmlIncubator::clear();
    delete std::exchange(m_component, nullptr);
    m_view.setSource(m_source);
}

void PanelPages::clear() {
    QQmlIncubator::clear();
    delete std::exchange(m_component, nullptr);
    m_view.setSource({});
}

} // namespace vorq
