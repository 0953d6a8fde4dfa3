#include "capture/attachments/OfficeText.h"

#include "capture/attachments/AttachedFile.h"
#include "capture/attachments/AttachedText.h"
#include "library/rtf/RtfReader.h"
#include "support/text/Text.h"

#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// A bomb unpacks to any size; of slides this is thousands.
constexpr qint64 unpackedLimit = 32 << 20;

// Mostly of pictures, which are passed over.
constexpr qint64 rtfLimit = 64 << 20;

// The preview that the application puts into its package.
constexpr const char* previewPattern = "*review.pdf";

std::optional<QString> textOfSlides(DocumentTools& tools, const QString& path,
                                    const std::stop_token& stop) {
    const auto xml = tools.unpack(path, u"ppt/slides/*.xml"_s, unpackedLimit, stop);
    if (!xml) return std::nullopt;
    return slideText(*xml, xml->size() >= unpackedLimit);
}

std::optional<QString> textOfPreview(DocumentTools& tools, const QString& path,
                                     const std::stop_token& stop) {
    const auto pdf = tools.unpack(path, QString::fromLatin1(previewPattern), unpackedLimit, stop);
    if (!pdf || pdf->isEmpty()) return std::nullopt;
    const auto contents = tools.readPdf({{}, *pdf}, stop);
    if (!contents || contents->text.isEmpty()) return std::nullopt;
    return contents->text;
}

std::optional<QString> textOfRtf(AttachedFile& file, const std::stop_token& stop) {
    const auto bytes = file.read(rtfLimit, stop);
    if (!bytes) return std::nullopt;
    const auto rich = readRtf(*bytes);
    if (!rich) return std::nullopt;
    const QStringView text = trimmed(rich->text());
    if (text.isEmpty()) return std::nullopt;
    return text.toString();
}

std::optional<QString> quickText(DocumentTools& tools, const QString& copy,
                                 const QString& extension, const std::stop_token& stop) {
    if (extension == u"pptx" || extension == u"ppt") return textOfSlides(tools, copy, stop);
    if (extension == u"pages" || extension == u"key") return textOfPreview(tools, copy, stop);
    return std::nullopt;
}

} // namespace

std::optional<QString> officeText(DocumentTools& tools, AttachedFile& file,
                                  const QString& extension, const std::stop_token& stop) {
    if (extension == u"rtf")
        if (auto text = textOfRtf(file, stop)) return text;
    // A copy under a name that no program takes for an option, a pattern or an address, and beside
    // which nothing is left.
    const QTemporaryDir folder;
    const QString copy = folder.filePath(u"document."_s + extension);
    if (!folder.isValid() || !file.copyTo(copy, stop)) return std::nullopt;
    if (auto text = quickText(tools, copy, extension, stop)) return text;
    if (stop.stop_requested()) return std::nullopt;
    const auto converted = tools.officeText(copy, stop);
    if (!converted || converted->isEmpty()) return std::nullopt;
    return *converted;
}

} // namespace vorq
