#include "shell/dialogs/PanelColorEdit.h"

#include "shell/look/HexColor.h"

#include <utility>

namespace vorq {
namespace {

QString hexOf(const QColor& color) {
    return HexColor::hex(RgbaColor{color.redF(), color.greenF(), color.blueF()});
}

QColor colorOf(const QString& hex, const QColor& otherwise) {
    const std::optional<RgbaColor> color = HexColor::rgbaComponents(hex);
    if (!color) return otherwise;
    return QColor::fromRgbF(static_cast<float>(color->red), static_cast<float>(color->green),
                            static_cast<float>(color->blue));
}

} // namespace

PanelColorEdit::PanelColorEdit(const QString& title, Setting setting, QObject* parent)
    : QObject(parent), m_setting(std::move(setting)) {
    m_dialog.setProperty("title", title);
    connect(&m_dialog, &ColorDialog::previewed, this, [this](const QColor& color) {
        m_shown = hexOf(color);
        m_setting.preview(m_shown);
    });
    connect(&m_dialog, &ColorDialog::accepted, this, &PanelColorEdit::accept);
    connect(&m_dialog, &ColorDialog::rejected, this, &PanelColorEdit::reject);
}

void PanelColorEdit::accept(const QColor& color) {
    m_setting.write(hexOf(color));
    emit ended();
}

// Unless the setting has got another value meanwhile, which is not this choice's to undo.
void PanelColorEdit::reject() {
    if (m_setting.read() == m_shown) m_setting.preview(m_former);
    emit ended();
}

void PanelColorEdit::open(const QColor& ownColor) {
    if (!m_dialog.isOpen()) {
        m_former = m_setting.read();
        m_shown = m_former;
        emit began();
    }
    m_dialog.open(colorOf(m_former, ownColor));
}

} // namespace vorq
