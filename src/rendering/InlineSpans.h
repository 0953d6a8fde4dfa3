#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace vorq {

/// A line of reply text without its inline marks, and what the marks said.
///
/// Only inline marks are read: a line that looks like a heading or a list stays as it is, white
/// space is kept, and marks that do not match show as typed. Any thread.
struct InlineSpans {
    /// How one run of the text is set. Positions count UTF-16 units of the text.
    struct Span {
        qsizetype start = 0;
        qsizetype length = 0;
        bool isStrong = false;
        bool isEmphasized = false;
        bool isCode = false;
        bool isStruck = false;
        QString link{}; ///< empty for none

        bool operator==(const Span&) const = default;
    };

    QString text;
    /// In order and without overlap; runs without any mark have none.
    QList<Span> spans;

    bool operator==(const InlineSpans&) const = default;

    [[nodiscard]] static InlineSpans parse(QStringView source);
};

} // namespace vorq
