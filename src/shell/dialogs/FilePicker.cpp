#include "shell/dialogs/FilePicker.h"

#include "capture/attachments/AttachmentKinds.h"

#include <QFileDialog>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Some desktops tell capitals apart, which cameras write.
QString patternsOf(bool picturesOnly) {
    QStringList patterns;
    for (const FileContentType& type : fileContentTypes()) {
        if (picturesOnly && !type.mimeType.startsWith("image/"_L1)) continue;
        for (const QString& extension : type.extensions)
            patterns += {u"*."_s + extension, u"*."_s + extension.toUpper()};
    }
    return patterns.join(u' ');
}

} // namespace

FilePicker::~FilePicker() {
    delete m_dialog;
}

void FilePicker::choose(bool picturesOnly) {
    const QString patterns = patternsOf(picturesOnly);
    open({.title = picturesOnly ? tr("Add photos") : tr("Add study files"),
          .types = (picturesOnly ? tr("Photos (%1)") : tr("Study files (%1)")).arg(patterns)});
}

void FilePicker::chooseProfilePicture() {
    open({.title = tr("Choose a profile picture"),
          .types = tr("Photos (%1)").arg(patternsOf(true)),
          .isOne = true});
}

void FilePicker::open(const Wish& wish) {
    if (m_dialog && m_dialog->isVisible()) {
        m_dialog->raise();
        m_dialog->activateWindow();
        return;
    }
    m_dialog = new QFileDialog(nullptr, wish.title);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setFileMode(wish.isOne ? QFileDialog::ExistingFile : QFileDialog::ExistingFiles);
    m_dialog->setOption(QFileDialog::HideNameFilterDetails);
    m_dialog->setNameFilters({wish.types, tr("All files (*)")});
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
