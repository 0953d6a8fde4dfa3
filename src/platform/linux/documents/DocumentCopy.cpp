#include "platform/linux/documents/DocumentCopy.h"

#include <QFile>

namespace vorq {
namespace {

constexpr qint64 copiedPieceSize = 1 << 20;

} // namespace

std::optional<DocumentFailure> copyDocument(const QString& from, const QString& to,
                                            const std::stop_token& stop) {
    QFile document(from);
    if (!document.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return DocumentFailure::Unreadable;
    QFile copy(to);
    if (!copy.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return DocumentFailure::NoRoom;
    for (qint64 copied = 0;;) {
        if (stop.stop_requested()) return DocumentFailure::Stopped;
        const QByteArray piece = document.read(copiedPieceSize);
        if (piece.isEmpty())
            return document.error() == QFileDevice::NoError
                       ? std::nullopt
                       : std::optional(DocumentFailure::Unreadable);
        copied += piece.size();
        // It may be growing.
        if (copied > DocumentTools::officeLimit) return DocumentFailure::TooLarge;
        if (copy.write(piece) != piece.size()) return DocumentFailure::NoRoom;
    }
}

} // namespace vorq
