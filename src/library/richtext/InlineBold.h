#pragma once

#include <QStringView>

#include <vector>

namespace vorq {

/// A span of bold Markdown: where its opening asterisks stand and how long the text between them
/// and the closing ones is.
struct InlineBoldSpan {
    qsizetype start = 0;
    qsizetype length = 0;

    [[nodiscard]] qsizetype textStart() const { return start + 2; }
    [[nodiscard]] qsizetype textEnd() const { return textStart() + length; }
    [[nodiscard]] qsizetype end() const { return textEnd() + 2; }

    bool operator==(const InlineBoldSpan&) const = default;
};

/// The spans from left to right: two asterisks, at least one code point but as few as will do, and
/// two asterisks, all on one line. Positions count UTF-16 units. Linear in the text.
[[nodiscard]] std::vector<InlineBoldSpan> inlineBoldSpans(QStringView text);

} // namespace vorq
