#pragma once

#include <QString>

#include <cstdint>

/// How the program and its helper for documents, `vorq-documents`, speak. The document is the
/// helper's standard input, the answer its standard output.
namespace vorq::documentHelper {

inline const QString programName = QStringLiteral("vorq-documents");

/// The one argument of the helper.
inline const QString pictureVerb = QStringLiteral("picture"); // answers with a JPEG
inline const QString avatarVerb = QStringLiteral("avatar");   // answers with a small JPEG
inline const QString pdfVerb = QStringLiteral("pdf"); // answers with a mark and what it announces

inline const QString rtfVerb = QStringLiteral("rtf"); // answers with the text, in UTF-8

inline constexpr char textMark = 'T'; // UTF-8
inline constexpr char pageMark = 'P'; // a JPEG of the first page, or nothing

/// The exit status.
enum Status : std::uint8_t {
    Done = 0,
    Usage = 2,
    Unreadable = 3,
    Protected = 4,
    TooLarge = 5,
    Animated = 6,
};

} // namespace vorq::documentHelper
