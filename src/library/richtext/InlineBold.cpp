#include "library/richtext/InlineBold.h"

#include "support/text/Text.h"

namespace vorq {
namespace {

constexpr QStringView boldMark = u"**";

qsizetype lineEnd(QStringView text, qsizetype from) {
    while (from < text.size() && !isNewline(text[from].unicode()))
        ++from;
    return from;
}

} // namespace

std::vector<InlineBoldSpan> inlineBoldSpans(QStringView text) {
    std::vector<InlineBoldSpan> spans;
    qsizetype end = -1; // of the line that is being read
    for (qsizetype start = text.indexOf(boldMark); start >= 0;
         start = text.indexOf(boldMark, start)) {
        if (start >= end) end = lineEnd(text, start);
        const qsizetype inner = start + boldMark.size();
        const qsizetype closing =
            inner < end ? text.first(end).indexOf(boldMark, inner + 1) : qsizetype{-1};
        if (closing < 0) {
            start = end; // nor does a later marker of this line close
            continue;
        }
        spans.push_back({.start = start, .length = closing - inner});
        start = spans.back().end();
    }
    return spans;
}

} // namespace vorq
