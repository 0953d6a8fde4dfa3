#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <expected>

class QIODevice;

namespace vorq {

enum class PdfFault : std::uint8_t { Unreadable, Protected };

/// What is read of a PDF: its text, or a picture of its first page where it has none.
struct PdfReading {
    QString text;         ///< trimmed; cut to so many characters as were asked for
    QByteArray firstPage; ///< as JPEG
};

/// Reads the pages until there are so many characters. The device must not be sequential.
[[nodiscard]] std::expected<PdfReading, PdfFault> readPdf(QIODevice& pdf, qsizetype textLimit);

} // namespace vorq
