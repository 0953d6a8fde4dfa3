#include "platform/testing/ScriptedAccessibility.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>

using namespace Qt::StringLiterals;

namespace vorq {

std::optional<QString> ScriptedElement::selectedText() const {
    return m_tree.note(m_name + ".selectedText") ? text : std::nullopt;
}

std::optional<TextRange> ScriptedElement::selectedTextRange() const {
    return m_tree.note(m_name + ".selectedTextRange") ? range : std::nullopt;
}

std::optional<QString> ScriptedElement::value() const {
    return m_tree.note(m_name + ".value") ? content : std::nullopt;
}

std::optional<bool> ScriptedElement::isPasswordField() const {
    return m_tree.note(m_name + ".isPasswordField") ? hidesText : std::nullopt;
}

std::optional<QPointF> ScriptedElement::position() const {
    return m_tree.note(m_name + ".position") ? origin : std::nullopt;
}

std::optional<QSizeF> ScriptedElement::size() const {
    return m_tree.note(m_name + ".size") ? extent : std::nullopt;
}

std::optional<std::vector<AccessibleElementPtr>> ScriptedElement::children() const {
    if (!m_tree.note(m_name + ".children") || !childNames) return std::nullopt;
    std::vector<AccessibleElementPtr> children;
    for (const QString& name : *childNames)
        children.push_back(m_tree.pointer(name));
    return children;
}

std::optional<QRectF> ScriptedElement::boundsForRange(TextRange asked) const {
    if (!m_tree.note(m_name + ".boundsForRange")) return std::nullopt;
    const auto entry = std::ranges::find(bounds, asked, &std::pair<TextRange, QRectF>::first);
    return entry == bounds.end() ? std::nullopt : std::optional(entry->second);
}

std::optional<QRectF> ScriptedElement::selectedTextMarkerBounds() const {
    return m_tree.note(m_name + ".selectedTextMarkerBounds") ? markerBounds : std::nullopt;
}

bool ScriptedElement::setSelectedText(const QString& newText) {
    if (!takesWrites || m_tree.m_stop.stop_requested()) return false;
    if (feignsWrites) return true;
    if (isEditor) content->replace(range->location, range->length, newText);
    if (isEditor) range = TextRange{.location = range->location + newText.size(), .length = 0};
    text = isEditor ? QString() : newText;
    return true;
}

bool ScriptedElement::setSelectedTextRange(TextRange newRange) {
    if (!takesWrites || m_tree.m_stop.stop_requested()) return false;
    range = newRange;
    if (isEditor) text = content->mid(range->location, range->length);
    return true;
}

ScriptedElement& ScriptedAccessibility::element(const QString& name) {
    std::shared_ptr<ScriptedElement>& element = m_elements[name];
    if (!element) element = std::make_shared<ScriptedElement>(name, *this);
    return *element;
}

AccessibleElementPtr ScriptedAccessibility::pointer(const QString& name) {
    element(name);
    return m_elements[name];
}

bool ScriptedAccessibility::note(const QString& read) {
    m_reads += read;
    if (onRead) onRead(read);
    if (hangs) hang();
    return !m_stop.stop_requested();
}

void ScriptedAccessibility::hang() {
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    ++hanging;
    never.wait(lock, m_stop, [] { return false; });
    --hanging;
}

AccessibleElementPtr ScriptedAccessibility::application(ProcessId, std::stop_token stop) {
    m_stop = std::move(stop);
    return note(u"application"_s) ? pointer(applicationName) : nullptr;
}

AccessibleElementPtr ScriptedAccessibility::focusedWindow(ProcessId, std::stop_token stop) {
    m_stop = std::move(stop);
    const bool isRead = note(u"focusedWindow"_s);
    return isRead && focusedWindowName ? pointer(*focusedWindowName) : nullptr;
}

AccessibleElementPtr ScriptedAccessibility::focusedElement(std::optional<ProcessId> process,
                                                           std::stop_token stop) {
    m_stop = std::move(stop);
    const bool isRead = note(process ? u"focusedElement"_s : u"system-wide focusedElement"_s);
    return isRead && focusedName ? pointer(*focusedName) : nullptr;
}

} // namespace vorq
