#include "platform/portable/documents/PdfReading.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

// Counts what is read of it.
class CountingBuffer final : public QBuffer {
  public:
    explicit CountingBuffer(QByteArray* bytes) : QBuffer(bytes) { open(QIODevice::ReadOnly); }
    qint64 count = 0;

  protected:
    qint64 readData(char* data, qint64 size) override {
        const qint64 read = QBuffer::readData(data, size);
        count += std::max<qint64>(read, 0);
        return read;
    }
};

QByteArray pdfOf(int pages) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    QPainter painter(&writer);
    for (int page = 0; page < pages; ++page) {
        if (page > 0) writer.newPage();
        for (int line = 0; line < 20; ++line)
            painter.drawText(400, 400 + 200 * line,
                             u"Page %1, silt, line %2"_s.arg(page).arg(line));
    }
    painter.end();
    return bytes;
}

TEST(PdfReading, ReadsNoPageAfterTheOneThatReachesTheLimit) {
    QByteArray pdf = pdfOf(400);
    const auto bytesReadFor = [&pdf](qsizetype limit) {
        CountingBuffer buffer(&pdf);
        const auto reading = readPdf(buffer, limit);
        EXPECT_TRUE(reading);
        EXPECT_LE(reading->text.size(), limit);
        return buffer.count;
    };
    const qint64 all = bytesReadFor(10'000'000);
    EXPECT_LT(bytesReadFor(100), all / 4);
}

} // namespace
} // namespace vorq
