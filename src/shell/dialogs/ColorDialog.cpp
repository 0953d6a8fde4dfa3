#include "shell/dialogs/ColorDialog.h"

namespace vorq {

ColorDialog::ColorDialog(QObject* parent) : QObject(parent) {}

ColorDialog::~ColorDialog() {
    delete m_dialog;
}

void ColorDialog::open(const QColor& current) {
    if (isOpen()) {
        m_dialog->raise();
        m_dialog->activateWindow();
        return;
    }
    m_dialog = new QColorDialog(current);
    m_dialog->setWindowTitle(m_title);
    // The panel is above all others, too, and would cover it.
    m_dialog->setWindowFlag(Qt::WindowStaysOnTopHint);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_dialog, &QColorDialog::currentColorChanged, this, &ColorDialog::previewed);
    connect(m_dialog, &QColorDialog::colorSelected, this, &ColorDialog::accepted);
    connect(m_dialog, &QDialog::rejected, this, &ColorDialog::rejected);
    m_dialog->open();
}

} // namespace vorq
