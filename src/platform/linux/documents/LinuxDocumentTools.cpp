#include "platform/linux/documents/LinuxDocumentTools.h"

#include "platform/documents/DocumentHelper.h"
#include "platform/linux/documents/GuardedFailure.h"
#include "platform/linux/documents/GuardedProgram.h"
#include "platform/linux/documents/OfficeConverter.h"
#include "support/text/Text.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::chrono::seconds toolLimit{60};
constexpr quint64 toolMemory = quint64{3} << 30;
constexpr qint64 convertedTextLimit = 4 << 20;

DocumentFailure toolFailure(const GuardedOutput& output) {
    if (const auto failure = failureOf(output.end)) return *failure;
    if (output.status == documentHelper::Protected) return DocumentFailure::Protected;
    if (output.status == documentHelper::TooLarge) return DocumentFailure::TooLarge;
    if (output.status == documentHelper::Animated) return DocumentFailure::Animated;
    return DocumentFailure::Unreadable;
}

QByteArray firstBytes(const DocumentSource& source, qsizetype count) {
    if (source.path.isEmpty()) return source.bytes.first(std::min(count, source.bytes.size()));
    QFile file(source.path);
    return file.open(QIODevice::ReadOnly) ? file.read(count) : QByteArray();
}

bool isHeif(const DocumentSource& source) {
    static constexpr std::array<QByteArrayView, 6> brands = {"heic", "heix", "heim",
                                                             "heis", "mif1", "msf1"};
    const QByteArray start = firstBytes(source, 12);
    return QByteArrayView(start).sliced(std::min<qsizetype>(4, start.size())).startsWith("ftyp") &&
           std::ranges::find(brands, QByteArrayView(start).last(4)) != brands.end();
}

// The kinds that have pages of text; the others have slides, whose text only a PDF brings along.
bool isTextDocument(const QString& extension) {
    static constexpr std::array<QStringView, 5> extensions = {u"doc", u"docx", u"odt", u"rtf",
                                                              u"pages"};
    return std::ranges::find(extensions, extension) != extensions.end();
}

} // namespace

QString LinuxDocumentTools::installedHelper() {
    const QString folder = QCoreApplication::applicationDirPath();
    const QString beside = folder + u'/' + documentHelper::programName;
    if (QFile::exists(beside)) return beside;
    return folder + u"/../libexec/"_s + documentHelper::programName;
}

std::expected<QByteArray, DocumentFailure>
LinuxDocumentTools::askHelper(const QString& verb, const DocumentSource& source, qint64 limit,
                              const std::stop_token& stop) const {
    const GuardedOutput output = runGuarded({.program = m_programs.helper,
                                             .arguments = {verb},
                                             .inputPath = source.path,
                                             .input = source.bytes,
                                             .isAlone = true,
                                             .outputLimit = limit,
                                             .timeLimit = toolLimit,
                                             .memoryLimit = toolMemory},
                                            stop);
    if (output.end == GuardedOutput::End::Flooded) return QByteArray();
    if (output.end == GuardedOutput::End::Exited && output.status == documentHelper::Done)
        return output.bytes;
    return std::unexpected(toolFailure(output));
}

std::expected<QByteArray, DocumentFailure> LinuxDocumentTools::jpegOf(const DocumentSource& picture,
                                                                      const std::stop_token& stop) {
    return askOfPicture(documentHelper::pictureVerb, picture, stop);
}

std::expected<QByteArray, DocumentFailure>
LinuxDocumentTools::avatarOf(const DocumentSource& picture, const std::stop_token& stop) {
    return askOfPicture(documentHelper::avatarVerb, picture, stop);
}

std::expected<QByteArray, DocumentFailure>
LinuxDocumentTools::askOfPicture(const QString& verb, const DocumentSource& picture,
                                 const std::stop_token& stop) const {
    if (!picture.path.isEmpty() && isHeif(picture)) return askOfHeif(verb, picture.path, stop);
    return askHelper(verb, picture, pictureLimit, stop);
}

std::expected<QByteArray, DocumentFailure>
LinuxDocumentTools::askOfHeif(const QString& verb, const QString& path,
                              const std::stop_token& stop) const {
    const QTemporaryDir folder;
    const GuardedOutput output = runGuarded(
        {.program = m_programs.heif,
         .arguments = {u"-q"_s, u"95"_s, u"/dev/stdin"_s, folder.filePath(u"picture.jpg"_s)},
         .inputPath = path,
         .folder = folder.path(),
         .isAlone = true,
         .outputLimit = convertedTextLimit,
         .timeLimit = toolLimit,
         .memoryLimit = toolMemory},
        stop);
    if (output.end != GuardedOutput::End::Exited || output.status != 0)
        return std::unexpected(toolFailure(output));
    // One file for each picture, numbered where there are several.
    for (const char* name : {"picture.jpg", "picture-1.jpg"})
        if (const QString made = folder.filePath(QString::fromLatin1(name)); QFile::exists(made))
            return askHelper(verb, {made}, pictureLimit, stop);
    return std::unexpected(DocumentFailure::Unreadable);
}

std::expected<PdfContents, DocumentFailure>
LinuxDocumentTools::readPdf(const DocumentSource& pdf, const std::stop_token& stop) {
    const auto answer = askHelper(documentHelper::pdfVerb, pdf, convertedTextLimit * 4, stop);
    if (!answer) return std::unexpected(answer.error());
    const QByteArray rest = answer->mid(1);
    if (answer->startsWith(documentHelper::textMark))
        return PdfContents{QString::fromUtf8(rest), {}};
    return PdfContents{{}, rest.size() > pictureLimit ? QByteArray() : rest};
}

std::expected<QString, DocumentFailure> LinuxDocumentTools::rtfText(const DocumentSource& rtf,
                                                                    const std::stop_token& stop) {
    const auto answer = askHelper(documentHelper::rtfVerb, rtf, convertedTextLimit * 4, stop);
    if (!answer) return std::unexpected(answer.error());
    return QString::fromUtf8(*answer);
}

// It opens its standard input anew, and so needs no name, which it would take for a pattern. It
// begins a session without a terminal, and so asks nobody for a password.
std::expected<QByteArray, DocumentFailure> LinuxDocumentTools::unpack(const QString& path,
                                                                      const QString& pattern,
                                                                      qint64 limit,
                                                                      const std::stop_token& stop) {
    const GuardedOutput output = runGuarded({.program = m_programs.unzip,
                                             .arguments = {u"-p"_s, u"/dev/stdin"_s, pattern},
                                             .inputPath = path,
                                             .isAlone = true,
                                             .outputLimit = limit,
                                             .timeLimit = toolLimit,
                                             .memoryLimit = toolMemory},
                                            stop);
    if (output.end == GuardedOutput::End::Exited || output.end == GuardedOutput::End::Flooded)
        return output.bytes;
    return std::unexpected(toolFailure(output));
}

std::expected<QString, DocumentFailure>
LinuxDocumentTools::officeText(const QString& path, const QString& extension,
                               const std::stop_token& stop) {
    OfficeConverter converter(m_programs.office);
    if (!isTextDocument(extension)) {
        const auto pdf = converter.convert(path, extension, u"pdf"_s, stop);
        if (!pdf) return std::unexpected(pdf.error());
        const auto contents = readPdf({*pdf}, stop);
        if (!contents) return std::unexpected(contents.error());
        return contents->text;
    }
    const auto text = converter.convert(path, extension, u"txt:Text (encoded):UTF8"_s, stop);
    if (!text) return std::unexpected(text.error());
    QFile file(*text);
    if (!file.open(QIODevice::ReadOnly)) return std::unexpected(DocumentFailure::Unreadable);
    QString decoded = QString::fromUtf8(file.read(convertedTextLimit));
    if (decoded.startsWith(QChar::ByteOrderMark)) decoded.remove(0, 1);
    return trimmed(decoded).toString();
}

} // namespace vorq
