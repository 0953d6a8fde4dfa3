#include "capture/attachments/AttachmentKinds.h"

#include "capture/attachments/PromptAttachment.h"

#include <QMimeDatabase>

#include <gtest/gtest.h>

#include <algorithm>

namespace vorq {
namespace {

TEST(AttachmentKinds, EachExtensionHasItsWay) {
    EXPECT_EQ(attachmentKind(u"heif"), AttachmentKind::Picture);
    EXPECT_EQ(attachmentKind(u"pdf"), AttachmentKind::Pdf);
    EXPECT_EQ(attachmentKind(u"key"), AttachmentKind::Office);
    for (const QStringView other : {u"md", u"txt", u"cpp", u""})
        EXPECT_EQ(attachmentKind(other), AttachmentKind::Text);
}

TEST(AttachmentKinds, TheTypesToChooseFromAreThoseThatAreRead) {
    QStringList extensions;
    for (const FileContentType& type : fileContentTypes()) {
        EXPECT_TRUE(type.mimeType.contains(u'/'));
        for (const QString& extension : type.extensions) {
            EXPECT_TRUE(PromptAttachment::isImageExtension(extension) ||
                        PromptAttachment::isDocumentExtension(extension))
                << qPrintable(extension);
            extensions += extension;
        }
    }
    EXPECT_EQ(extensions.size(), 22);
    EXPECT_EQ(extensions.removeDuplicates(), 0);
    EXPECT_EQ(fileContentTypes().front().mimeType, "image/jpeg");
}

// As a desktop's dialog finds the files by their types.
TEST(AttachmentKinds, TheTypesAreThoseOfTheSystem) {
    const QMimeDatabase types;
    for (const QString name : {"a.png", "a.pdf", "a.docx", "a.pptx", "a.odt", "a.odp", "a.doc",
                               "a.rtf", "a.md", "a.webp"}) {
        const QMimeType type = types.mimeTypeForFile(name, QMimeDatabase::MatchExtension);
        const bool isOffered =
            std::ranges::any_of(fileContentTypes(), [&type](const FileContentType& offered) {
                return type.inherits(offered.mimeType);
            });
        EXPECT_TRUE(isOffered) << qPrintable(name) << qPrintable(type.name());
    }
}

} // namespace
} // namespace vorq
