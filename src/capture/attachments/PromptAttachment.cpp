#include "capture/attachments/PromptAttachment.h"

#include "support/text/Text.h"

#include <algorithm>
#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::array<QStringView, 10> imageExtensions = {u"png",  u"jpg", u"jpeg", u"heic", u"heif",
                                                         u"webp", u"tif", u"tiff", u"gif",  u"bmp"};
constexpr std::array<QStringView, 9> officeExtensions = {u"docx",  u"doc", u"pptx", u"ppt", u"rtf",
                                                         u"pages", u"key", u"odt",  u"odp"};
constexpr std::array<QStringView, 12> documentExtensions = {u"pdf",   u"docx", u"doc", u"pptx",
                                                            u"ppt",   u"rtf",  u"txt", u"md",
                                                            u"pages", u"key",  u"odt", u"odp"};

bool holds(std::span<const QStringView> set, QStringView extension) {
    return std::ranges::find(set, extension) != set.end();
}

} // namespace

bool PromptAttachment::isImageExtension(QStringView extension) {
    return holds(imageExtensions, extension);
}

bool PromptAttachment::isOfficeExtension(QStringView extension) {
    return holds(officeExtensions, extension);
}

bool PromptAttachment::isDocumentExtension(QStringView extension) {
    return holds(documentExtensions, extension);
}

QString pathExtension(QStringView fileName) {
    const qsizetype dot = fileName.lastIndexOf(u'.');
    if (dot <= 0) return {};
    return fileName.mid(dot + 1).toString().toLower();
}

QStringList composerDisplayNames(const QList<PromptAttachment>& attachments) {
    const auto noteCount = std::ranges::count_if(attachments, &PromptAttachment::isHubNote);
    QStringList names;
    int note = 0;
    for (const PromptAttachment& attachment : attachments) {
        if (attachment.isDeepenSelection)
            names += u"deepen"_s;
        else if (!attachment.isHubNote())
            names += attachment.fileName;
        else if (noteCount == 1)
            names += u"Notes"_s;
        else
            names += u"Notes %1"_s.arg(++note);
    }
    return names;
}

QString attachmentText(const QList<PromptAttachment>& attachments) {
    QStringList pieces;
    for (const PromptAttachment& attachment : attachments) {
        if (!attachment.textContent) continue;
        const QStringView text = trimmed(*attachment.textContent);
        if (text.isEmpty()) continue;
        // A line break in a name would end the line that tells the files apart.
        QString name = attachment.fileName;
        name.replace(u'\n', u' ').replace(u'\r', u' ');
        // Joined rather than filled in, since a text may hold "%1" itself.
        pieces += u"--- Attached file: "_s + name + u" ---\n"_s + text.toString();
    }
    return pieces.join(u"\n\n"_s);
}

} // namespace vorq
