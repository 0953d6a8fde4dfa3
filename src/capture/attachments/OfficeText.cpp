#include "capture/attachments/OfficeText.h"

#include "capture/attachments/AttachedFile.h"
#include "capture/attachments/AttachedText.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// A bomb unpacks to any size; of slides this is thousands.
constexpr qint64 unpackedLimit = 32 << 20;

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

std::optional<QString> textOfRtf(DocumentTools& tools, const QString& path,
                                 const std::stop_token& stop) {
    const auto text = tools.rtfText({path}, stop);
    if (!text || text->isEmpty()) return std::nullopt;
    return *text;
}

std::optional<QString> quickText(DocumentTools& tools, const QString& path,
                                 const QString& extension, const std::stop_token& stop) {
    if (extension == u"rtf") return textOfRtf(tools, path, stop);
    if (extension == u"pptx" || extension == u"ppt") return textOfSlides(tools, path, stop);
    if (extension == u"pages" || extension == u"key") return textOfPreview(tools, path, stop);
    return std::nullopt;
}

} // namespace

std::expected<QString, DocumentFailure> officeText(DocumentTools& tools, const AttachedFile& file,
                                                   const QString& extension,
                                                   const std::stop_token& stop) {
    if (file.size() > DocumentTools::officeLimit) return std::unexpected(DocumentFailure::TooLarge);
    const QString path = file.openedPath();
    if (auto text = quickText(tools, path, extension, stop)) return *text;
    if (stop.stop_requested()) return std::unexpected(DocumentFailure::Stopped);
    auto converted = tools.officeText(path, extension, stop);
    if (converted && converted->isEmpty()) return std::unexpected(DocumentFailure::Unreadable);
    return converted;
}

} // namespace vorq
