#include "shell/dialogs/AlertBox.h"

#include "shell/look/StatusGlyphs.h"

#include <QAbstractButton>
#include <QFont>
#include <QIcon>
#include <QLabel>
#include <QPushButton>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr int iconSize = 48;
constexpr int leastTextWidth = 340;

// The message reads as a heading, as it does on desktops that draw such boxes themselves.
void setOut(const QMessageBox& box) {
    if (auto* message = box.findChild<QLabel*>(u"qt_msgbox_label"_s)) {
        QFont font = message->font();
        font.setBold(true);
        message->setFont(font);
    }
    if (auto* text = box.findChild<QLabel*>(u"qt_msgbox_informativelabel"_s))
        text->setMinimumWidth(leastTextWidth);
}

std::unique_ptr<QMessageBox> makeBox(const Alert& alert) {
    auto box = std::make_unique<QMessageBox>();
    box->setWindowTitle(u"Vorq"_s);
    box->setIconPixmap(
        statusIcon(StatusImage::Glyph).pixmap(QSize(iconSize, iconSize), box->devicePixelRatioF()));
    box->setTextFormat(Qt::PlainText);
    box->setText(alert.message);
    box->setInformativeText(alert.informativeText);
    setOut(*box);
    box->setAttribute(Qt::WA_DeleteOnClose);
    // The panel is above all others, too, and would cover it.
    box->setWindowFlag(Qt::WindowStaysOnTopHint);
    for (qsizetype index = 0; index < alert.buttons.size(); ++index) {
        const bool isLast = index + 1 == alert.buttons.size();
        QPushButton* button = box->addButton(
            alert.buttons[index], isLast ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
        button->setProperty("index", index);
        if (!isLast) continue;
        box->setDefaultButton(button);
        box->setEscapeButton(button);
    }
    return box;
}

} // namespace

AlertBox::~AlertBox() {
    close();
}

void AlertBox::close() {
    if (!m_box) return;
    m_box->disconnect();
    delete m_box;
}

// The box goes by itself; whoever is told may want to show the next one.
void AlertBox::answer(const Chosen& chosen) {
    const QMessageBox* box = std::exchange(m_box, nullptr);
    const QAbstractButton* clicked = box->clickedButton();
    const qsizetype last = m_alert.buttons.size() - 1;
    chosen(clicked == nullptr ? last : clicked->property("index").toLongLong());
}

void AlertBox::bringForward() const {
    m_box->show();
    m_box->raise();
    m_box->activateWindow();
}

void AlertBox::show(const Alert& alert, Chosen chosen) {
    if (m_box && m_alert == alert) return bringForward();
    close();
    m_alert = alert;
    m_box = makeBox(alert).release();
    QObject::connect(m_box, &QMessageBox::finished, m_box,
                     [this, chosen = std::move(chosen)] { answer(chosen); });
    bringForward();
}

} // namespace vorq
