#include "shell/look/ApplicationFont.h"

#include <QApplication>

namespace vorq {

ApplicationFont::ApplicationFont() : m_usual(QApplication::font()) {}

void ApplicationFont::setTextScale(double scale) {
    if (m_scale == scale) return;
    m_scale = scale;
    QFont font = m_usual;
    if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * scale);
    QApplication::setFont(font);
}

} // namespace vorq
