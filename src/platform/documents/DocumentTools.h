#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <expected>
#include <stop_token>

namespace vorq {

/// A document: the path of a file, or the bytes themselves where the path is empty.
struct DocumentSource {
    QString path;
    QByteArray bytes = {};
};

/// Why a document gave nothing.
enum class DocumentFailure : std::uint8_t {
    Unreadable, ///< damaged, of another kind, or what reads it crashed, as for want of memory
    Protected,  ///< by a password
    TooLarge,   ///< a picture of too many pixels, or a file beyond its limit
    Animated,   ///< a picture that moves, where one is wanted that stands still
    TimedOut,
    Stopped,
    NoTool, ///< what reads this kind is not installed
    NoRoom, ///< there is no room for a copy of it in the folder for temporary files
};

/// What a PDF says; where it says nothing, what its first page looks like.
struct PdfContents {
    QString text;         ///< trimmed; cut to `DocumentTools::textLimit`
    QByteArray firstPage; ///< as JPEG; empty if there is a text, no page, or one that is too large
};

/// Reads documents with code that may crash or hang on them, and so in processes of its own. Every
/// function blocks until it is done, for a few minutes at worst, and may be called on any thread
/// but the main one. A stop ends it within moments, with all processes that it started.
class DocumentTools {
  public:
    /// No more characters than this are read of a document.
    static constexpr qsizetype textLimit = 60000;
    /// Most bytes of a picture that is given.
    static constexpr qint64 pictureLimit = 3500000 - 1;
    /// Most bytes of an office document: its converter gets a copy.
    static constexpr qint64 officeLimit = qint64{256} << 20;

    DocumentTools() = default;
    DocumentTools(const DocumentTools&) = delete;
    DocumentTools& operator=(const DocumentTools&) = delete;
    virtual ~DocumentTools() = default;

    /// The picture as JPEG of quality 72: its first frame, upright, on white, without what else the
    /// file says of it. Empty if that has more bytes than `pictureLimit`. `TooLarge` is for too
    /// many pixels.
    virtual std::expected<QByteArray, DocumentFailure> jpegOf(const DocumentSource& picture,
                                                              const std::stop_token& stop) = 0;

    /// A whole picture that stands still, as a JPEG of 512 pixels on its longer side at most,
    /// otherwise as jpegOf() gives it.
    virtual std::expected<QByteArray, DocumentFailure> avatarOf(const DocumentSource& picture,
                                                                const std::stop_token& stop) = 0;

    virtual std::expected<PdfContents, DocumentFailure> readPdf(const DocumentSource& pdf,
                                                                const std::stop_token& stop) = 0;

    /// The text of an RTF document, cut to `textLimit`; empty if it has none.
    virtual std::expected<QString, DocumentFailure> rtfText(const DocumentSource& rtf,
                                                            const std::stop_token& stop) = 0;

    /// The contents of all files in a ZIP archive whose name fits the pattern, joined; empty if
    /// there are none. No more than `limit` bytes are unpacked.
    virtual std::expected<QByteArray, DocumentFailure> unpack(const QString& path,
                                                              const QString& pattern, qint64 limit,
                                                              const std::stop_token& stop) = 0;

    /// The text of an office document, whose kind the extension tells, lower-case and without the
    /// dot; trimmed. Nothing that the document refers to is read, and none of its macros runs.
    virtual std::expected<QString, DocumentFailure>
    officeText(const QString& path, const QString& extension, const std::stop_token& stop) = 0;
};

} // namespace vorq
