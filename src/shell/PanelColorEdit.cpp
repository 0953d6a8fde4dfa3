#include "shell/PanelColorEdit.h"

#include "shell/HexColor.h"

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
    const auto take = [this](const QColor& color) { m_setting.write(hexOf(color)); };
    connect(&m_dialog, &ColorDialog::previewed, this, take);
    connect(&m_dialog, &ColorDialog::accepted, this, take);
    connect(&m_dialog, &ColorDialog::rejected, this, [this] { m_setting.write(m_former); });
    connect(&m_dialog, &ColorDialog::accepted, this, &PanelColorEdit::ended);
    connect(&m_dialog, &ColorDialog::rejected, this, &PanelColorEdit::ended);
}

void PanelColorEdit::open(const QColor& ownColor) {
    if (!m_dialog.isOpen()) {
        m_former = m_setting.read();
        emit began();
    }
    m_dialog.open(colorOf(m_former, ownColor));
}

} // namespace vorq
