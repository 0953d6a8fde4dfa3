#include "capture/attachments/AttachmentKinds.h"

#include "capture/attachments/PromptAttachment.h"

namespace vorq {

AttachmentKind attachmentKind(QStringView extension) {
    if (PromptAttachment::isImageExtension(extension)) return AttachmentKind::Picture;
    if (extension == u"pdf") return AttachmentKind::Pdf;
    if (PromptAttachment::isOfficeExtension(extension)) return AttachmentKind::Office;
    return AttachmentKind::Text;
}

const QList<FileContentType>& fileContentTypes() {
    static const QList<FileContentType> types = [] {
        QList<FileContentType> made;
        const auto add = [&made](const char* mimeType, const char* extensions) {
            made += {QString::fromLatin1(mimeType), QString::fromLatin1(extensions).split(u' ')};
        };
        add("image/jpeg", "jpg jpeg");
        add("image/png", "png");
        add("image/heic", "heic heif");
        add("image/webp", "webp");
        add("image/tiff", "tif tiff");
        add("image/gif", "gif");
        add("image/bmp", "bmp");
        add("application/pdf", "pdf");
        add("text/plain", "txt");
        add("application/rtf", "rtf");
        add("application/vnd.openxmlformats-officedocument.wordprocessingml.document", "docx");
        add("application/msword", "doc");
        add("application/vnd.openxmlformats-officedocument.presentationml.presentation", "pptx");
        add("application/vnd.ms-powerpoint", "ppt");
        add("application/vnd.apple.pages", "pages");
        add("application/vnd.apple.keynote", "key");
        add("application/vnd.oasis.opendocument.text", "odt");
        add("application/vnd.oasis.opendocument.presentation", "odp");
        add("text/markdown", "md");
        return made;
    }();
    return types;
}

} // namespace vorq
