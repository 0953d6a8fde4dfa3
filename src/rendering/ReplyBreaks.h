#pragma once

#include "support/text/CodeUnits.h"

#include <QString>
#include <QStringView>

namespace vorq {

/// Mends the raw text of a reply before it is read line by line.
namespace replybreaks {

/// Index of the first line feed at or after `from`, or -1. The line feed of a carriage return pair
/// is not one: the pair is a character of its own.
[[nodiscard]] inline qsizetype lineFeed(QStringView text, qsizetype from) {
    qsizetype at = codeunits::find(text, from, u'\n');
    while (at > 0 && text[at - 1] == u'\r')
        at = codeunits::find(text, at + 1, u'\n');
    return at;
}

/// The text with a half-streamed bold span closed, escaped and paired line breaks made line feeds,
/// both ends trimmed, and line breaks put in if there is none. The result points into `text`, or
/// into `storage` where something had to change.
[[nodiscard]] QStringView mended(QStringView text, QString& storage);

} // namespace replybreaks
} // namespace vorq
