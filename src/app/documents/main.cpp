// Reads one document for the program, in a process that may crash, hang or be killed.

#include "library/rtf/RtfReader.h"
#include "platform/documents/DocumentHelper.h"
#include "platform/documents/DocumentTools.h"
#include "platform/portable/documents/AvatarEncoding.h"
#include "platform/portable/documents/PdfReading.h"
#include "platform/portable/documents/PictureEncoding.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>

#include <algorithm>
#include <unistd.h>

namespace vorq {
namespace {

// Mostly of pictures, which are passed over.
constexpr qsizetype rtfLimit = 64 << 20;

// Standard input, mapped into memory where that is a file.
class InputBytes {
  public:
    InputBytes() {
        if (!m_file.open(STDIN_FILENO, QIODevice::ReadOnly)) return;
        const qint64 size = m_file.size();
        const uchar* mapped = m_file.isSequential() || size == 0 ? nullptr : m_file.map(0, size);
        m_bytes = mapped ? QByteArray::fromRawData(reinterpret_cast<const char*>(mapped), size)
                         : m_file.readAll();
    }
    [[nodiscard]] const QByteArray& bytes() const { return m_bytes; }

  private:
    QFile m_file;
    QByteArray m_bytes;
};

int answer(const QByteArray& bytes) {
    QFile output;
    const bool isWritten = output.open(STDOUT_FILENO, QIODevice::WriteOnly) &&
                           output.write(bytes) == bytes.size() && output.flush();
    return isWritten ? documentHelper::Done : documentHelper::Unreadable;
}

int statusOf(PictureFault fault) {
    switch (fault) {
    case PictureFault::TooManyPixels:
        return documentHelper::TooLarge;
    case PictureFault::Animated:
        return documentHelper::Animated;
    case PictureFault::Unreadable:
        break;
    }
    return documentHelper::Unreadable;
}

int answerAvatar(const QByteArray& bytes) {
    const auto jpeg = avatarJpeg(bytes);
    return jpeg ? answer(*jpeg) : statusOf(jpeg.error());
}

int answerPicture(const QByteArray& bytes) {
    const auto picture = decodePicture(bytes);
    if (!picture) return statusOf(picture.error());
    const QByteArray jpeg = encodeJpeg(*picture);
    return jpeg.isEmpty() ? documentHelper::Unreadable : answer(jpeg);
}

int answerPdf(QByteArray bytes) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const auto reading = readPdf(buffer, DocumentTools::textLimit);
    if (!reading)
        return reading.error() == PdfFault::Protected ? documentHelper::Protected
                                                      : documentHelper::Unreadable;
    return reading->text.isEmpty() ? answer(documentHelper::pageMark + reading->firstPage)
                                   : answer(documentHelper::textMark + reading->text.toUtf8());
}

int answerRtf(QByteArrayView bytes) {
    const auto rich = readRtf(bytes.first(std::min(bytes.size(), rtfLimit)));
    if (!rich) return documentHelper::Unreadable;
    return answer(graphemePrefix(trimmed(rich->text()), DocumentTools::textLimit).toUtf8());
}

int run(const QStringList& arguments) {
    if (arguments.size() != 2) return documentHelper::Usage;
    const InputBytes input;
    if (arguments[1] == documentHelper::pictureVerb) return answerPicture(input.bytes());
    if (arguments[1] == documentHelper::avatarVerb) return answerAvatar(input.bytes());
    if (arguments[1] == documentHelper::pdfVerb) return answerPdf(input.bytes());
    if (arguments[1] == documentHelper::rtfVerb) return answerRtf(input.bytes());
    return documentHelper::Usage;
}

} // namespace
} // namespace vorq

// NOLINTNEXTLINE(bugprone-exception-escape)
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    // Qt Pdf does not give back all that it took for a document that it cannot open, and nothing
    // else is left to do.
    ::_exit(vorq::run(QCoreApplication::arguments()));
}
