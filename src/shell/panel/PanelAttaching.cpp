// How files, pictures and links go between the panel and the rest of the desktop.

#include "core/VorqAppState.h"
#include "shell/panel/PanelViewModel.h"
#include "support/async/OnPool.h"

#include <QBuffer>
#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>
#include <QPointer>

#include <expected>
#include <ranges>

namespace vorq {
namespace {

using Loaded = std::expected<PromptAttachment, QString>;

constexpr int jpegQuality = 72;

// Small as PNG, which keeps letters sharp; a large picture goes as JPEG.
std::optional<QString> dataURLOf(const QImage& image) {
    for (const char* format : {"PNG", "JPEG"}) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        if (!image.save(&buffer, format, format[0] == 'J' ? jpegQuality : -1)) continue;
        if (auto url = imageDataURL(bytes)) return url;
    }
    return std::nullopt;
}

} // namespace

void PanelViewModel::attachFiles(const QList<QUrl>& files) {
    setShowAttachTray(false);
    setNotice({});
    for (const QUrl& file : files) {
        if (file.isLocalFile())
            attachFile(file.toLocalFile());
        else
            setNotice(tr("%1: only files can be attached.").arg(file.toDisplayString()));
    }
    emit focusPromptWanted();
}

void PanelViewModel::attachFile(const QString& path) {
    (void)loadFile(this, path);
}

QCoro::Task<> PanelViewModel::loadFile(QPointer<PanelViewModel> self, QString path) {
    const Loaded loaded = co_await onPool([path] { return PromptAttachment::load(path); }, {});
    if (!self) co_return;
    if (loaded)
        self->m_attachments.append(*loaded);
    else
        self->setNotice(loaded.error());
}

bool PanelViewModel::attachPicture(const QByteArray& bytes) {
    const QImage image = QImage::fromData(bytes);
    if (image.isNull()) return false;
    setShowAttachTray(false);
    setNotice({});
    attachImage(image, tr("Dropped image.png"));
    emit focusPromptWanted();
    return true;
}

void PanelViewModel::attachImage(const QImage& image, const QString& name) {
    PromptAttachment attachment;
    attachment.fileName = name;
    attachment.imageDataURL = dataURLOf(image);
    if (attachment.imageDataURL)
        m_attachments.append(attachment);
    else
        setNotice(tr("The picture is too large to attach."));
}

bool PanelViewModel::attachFromClipboard() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data) return false;
    QList<QUrl> files;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile()) files += url;
    if (!files.isEmpty()) {
        attachFiles(files);
        return true;
    }
    // A word processor offers a picture of its text too; the text is what is meant.
    if (!data->hasImage() || data->hasText()) return false;
    attachImage(data->imageData().value<QImage>(), tr("Pasted image.png"));
    return true;
}

void PanelViewModel::copyText(const QString& text) const {
    QGuiApplication::clipboard()->setText(text);
}

bool PanelViewModel::copyLastReply() const {
    for (const VorqMessage& message : m_state.panel().messages().messages() | std::views::reverse) {
        const bool isReply = message.role == MessageRole::Assistant && !message.isWorking &&
                             !message.text.isEmpty() && !readsAsGreeting(message);
        if (!isReply) continue;
        copyText(message.text);
        return true;
    }
    return false;
}

void PanelViewModel::openLink(const QString& address) const {
    const QUrl url(address, QUrl::StrictMode);
    const QString scheme = url.scheme();
    if (!url.isValid()) return;
    if (scheme == u"https" || scheme == u"http" || scheme == u"mailto")
        QDesktopServices::openUrl(url);
}

} // namespace vorq
