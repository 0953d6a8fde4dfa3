#include "shell/dialogs/FilePicker.h"

#include <QFileDialog>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString pictures = u"*.png *.jpg *.jpeg *.heic *.heif *.webp *.tif *.tiff "
                         "*.gif *.bmp"_s;
// What can be read today; the others are offered once they can be.
const QString documents = u"*.txt *.md"_s;

} // namespace

FilePicker::~FilePicker() {
    delete m_dialog;
}

void FilePicker::choose(bool picturesOnly) {
    if (m_dialog && m_dialog->isVisible()) {
        m_dialog->raise();
        m_dialog->activateWindow();
        return;
    }
    const QString types = picturesOnly ? tr("Photos (%1)").arg(pictures)
                                       : tr("Study files (%1 %2)").arg(pictures, documents);
    m_dialog = new QFileDialog(nullptr, picturesOnly ? tr("Add photos") : tr("Add study files"));
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setFileMode(QFileDialog::ExistingFiles);
    m_dialog->setNameFilters({types, tr("All files (*)")});
    // The signals that carry the choice differ between the desktop's dialog and the toolkit's.
    connect(m_dialog, &QDialog::accepted, this, [this] { emit chosen(m_dialog->selectedUrls()); });
    connect(m_dialog, &QDialog::finished, this, [this] {
        m_hold.giveBack();
        emit closed();
    });
    m_dialog->winId(); // has its window made
    m_dialog->windowHandle()->setTransientParent(m_owner);
    m_hold = m_holds.take(PanelHoldKind::Dialog);
    m_dialog->open();
}

void FilePicker::close() {
    if (m_dialog) m_dialog->reject();
}

} // namespace vorq
