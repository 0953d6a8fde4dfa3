#include "capture/attachments/DocumentLoader.h"

#include "capture/attachments/AttachedFile.h"
#include "capture/attachments/AttachedPicture.h"
#include "capture/attachments/AttachedText.h"
#include "capture/attachments/AttachmentKinds.h"
#include "capture/attachments/FailureSentences.h"
#include "capture/attachments/OfficeText.h"
#include "platform/documents/DocumentTools.h"
#include "support/text/Graphemes.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

PromptAttachment textAttachment(const QString& text) {
    PromptAttachment attachment;
    attachment.textContent = text;
    return attachment;
}

QString cutToLimit(const QString& text) {
    return graphemePrefix(text, PromptAttachment::textLimit).toString();
}

} // namespace

AttachmentResult DocumentLoader::load(const QString& path) const {
    auto file = AttachedFile::open(path, m_pipes);
    if (!file) return std::unexpected(file.error());
    const QString fileName = QFileInfo(path).fileName();
    AttachmentResult result = contentsOf(*file, fileName);
    if (m_stop.stop_requested()) return file->failure(sentenceOf(DocumentFailure::Stopped));
    if (result) result->fileName = fileName;
    return result;
}

AttachmentResult DocumentLoader::loadPicture(const QByteArray& bytes, const QString& name) const {
    const auto url =
        pictureDataURL(m_tools, {{}, bytes}, bytes.size(), [&bytes] { return bytes; }, m_stop);
    if (!url) return std::unexpected(u"%1: %2"_s.arg(name, url.error()));
    PromptAttachment attachment;
    attachment.fileName = name;
    attachment.imageDataURL = *url;
    return attachment;
}

DocumentLoader::Contents DocumentLoader::contentsOf(AttachedFile& file,
                                                    const QString& fileName) const {
    // What comes through a pipe can be read but once.
    if (file.isPipe()) return text(file);
    switch (attachmentKind(pathExtension(fileName))) {
    case AttachmentKind::Picture:
        return picture(file);
    case AttachmentKind::Pdf:
        return pdf(file);
    case AttachmentKind::Office:
        return office(file, fileName);
    case AttachmentKind::Text:
        break;
    }
    return text(file);
}

DocumentLoader::Contents DocumentLoader::picture(AttachedFile& file) const {
    const auto url = pictureDataURL(
        m_tools, {file.openedPath()}, file.size(),
        [&] { return file.read(PromptAttachment::imageByteLimit, m_stop); }, m_stop);
    if (!url) return file.failure(url.error());
    PromptAttachment attachment;
    attachment.imageDataURL = *url;
    return attachment;
}

DocumentLoader::Contents DocumentLoader::pdf(const AttachedFile& file) const {
    const auto contents = m_tools.readPdf({file.openedPath()}, m_stop);
    if (!contents) return file.failure(sentenceOf(contents.error()));
    if (!contents->text.isEmpty()) return textAttachment(cutToLimit(contents->text));
    const QByteArray& page = contents->firstPage;
    if (page.isEmpty() || page.size() >= PromptAttachment::imageByteLimit)
        return textAttachment(u"(PDF attached; no extractable text.)"_s);
    PromptAttachment attachment =
        textAttachment(u"(PDF has no extractable text — first page attached as an image "
                       "for review.)"_s);
    attachment.imageDataURL = QString::fromLatin1("data:image/jpeg;base64," + page.toBase64());
    return attachment;
}

DocumentLoader::Contents DocumentLoader::office(const AttachedFile& file,
                                                const QString& fileName) const {
    const QString extension = pathExtension(fileName);
    const auto found = officeText(m_tools, file, extension, m_stop);
    // What is no fault of the document can be helped by the user alone.
    if (!found &&
        (found.error() == DocumentFailure::TooLarge || found.error() == DocumentFailure::NoRoom))
        return file.failure(sentenceOf(found.error()));
    if (!found)
        return textAttachment(u"(Attached "_s + fileName +
                              u"; could not extract text. Export to PDF if needed.)"_s);
    const QString text = cutToLimit(*found);
    return textAttachment(text.isEmpty() ? u"(Attached "_s + extension.toUpper() +
                                               u"; little extractable text.)"_s
                                         : text);
}

DocumentLoader::Contents DocumentLoader::text(AttachedFile& file) const {
    const auto bytes = file.read(PromptAttachment::textByteLimit, m_stop);
    if (!bytes) return std::unexpected(bytes.error());
    const auto text = decodeAttachedText(*bytes, bytes->size() == PromptAttachment::textByteLimit);
    if (!text)
        return file.failure(
            QCoreApplication::translate("PromptAttachment", "the file is not a text."));
    return textAttachment(cutToLimit(*text));
}

} // namespace vorq
