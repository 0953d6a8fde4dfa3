#include "platform/portable/documents/PdfReading.h"

#include "platform/portable/documents/PictureEncoding.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <QImage>
#include <QPdfDocument>
#include <QPdfSelection>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qreal renderScale = 1.5; // pixels per point
constexpr qreal pagePixelLimit = 40'000'000;

// Some characters have hundreds of code units; a document of such ends here.
constexpr qsizetype unitLimit = 4 << 20;

QString textOf(QPdfDocument& document, int page) {
    QString text = document.getAllText(page).text();
    text.replace(u"\r\n"_s, u"\n"_s);
    // Marks a hyphen at the end of a line.
    text.replace(QChar(0xFFFE), u'-');
    text.remove(QChar(0));
    return text;
}

QString textOf(QPdfDocument& document, qsizetype limit, int pages) {
    QString text;
    for (int page = 0; page < pages; ++page) {
        if (page > 0) text += u'\n';
        text += textOf(document, page);
        const QStringView found = trimmed(text);
        if (found.size() >= unitLimit ||
            (found.size() > limit && graphemeCountAtLeast(found, limit + 1)))
            break;
    }
    return graphemePrefix(trimmed(text), limit).toString();
}

// A page may claim to be as large as a house.
QSize renderedSize(QSizeF points) {
    const qreal pixels = points.width() * points.height() * renderScale * renderScale;
    const qreal scale = renderScale * std::min(1.0, std::sqrt(pagePixelLimit / pixels));
    return (points * scale).toSize();
}

QByteArray pictureOf(QPdfDocument& document) {
    const QSizeF points = document.pagePointSize(0);
    if (points.isEmpty()) return {};
    const QImage page = document.render(0, renderedSize(points));
    return page.isNull() ? QByteArray() : encodeJpeg(page);
}

} // namespace

std::expected<PdfReading, PdfFault> readPdf(QIODevice& pdf, qsizetype textLimit) {
    QPdfDocument document;
    document.load(&pdf);
    if (document.status() != QPdfDocument::Status::Ready) {
        const bool isProtected = document.error() == QPdfDocument::Error::IncorrectPassword ||
                                 document.error() == QPdfDocument::Error::UnsupportedSecurityScheme;
        return std::unexpected(isProtected ? PdfFault::Protected : PdfFault::Unreadable);
    }
    const int pages = document.pageCount();
    PdfReading reading{textOf(document, textLimit, pages), {}};
    if (reading.text.isEmpty() && pages > 0) reading.firstPage = pictureOf(document);
    return reading;
}

} // namespace vorq
