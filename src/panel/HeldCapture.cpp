#include "panel/HeldCapture.h"

#include <utility>

namespace vorq {

void HeldCapture::hold(const QString& text, const QString& application) {
    m_text = text;
    m_application = application;
    emit changed();
}

QString HeldCapture::release() {
    if (isEmpty()) return {};
    QString text = std::exchange(m_text, {});
    m_application.clear();
    emit changed();
    return text;
}

} // namespace vorq
