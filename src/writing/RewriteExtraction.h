#pragma once

#include <QString>

namespace vorq {

struct AIAnalysis;

/// What the selection has itself, and what of an answer therefore belongs to the rewrite instead of
/// being the model's talk around it.
struct RewriteForm {
    bool lines = false;      ///< more than one, or the writer asked for some
    bool dashes = false;     ///< between blanks
    bool listMarker = false; ///< at its beginning
    bool quotes = false;     ///< or asterisks, at an end

    bool operator==(const RewriteForm&) const = default;
};

/// The form of a selection; the ask tells what else the rewrite is to have.
[[nodiscard]] RewriteForm rewriteFormOf(QStringView original, QStringView ask);

/// The rewrite in an answer: its first line without list marker, quotes and remarks behind a dash,
/// but for what the form keeps. Where nothing is left, or what the selection is already, the first
/// paragraph of the answer. "" for a blank answer. Linear in the answer.
[[nodiscard]] QString extractRewrite(const QString& answer, const QString& fallbackSource,
                                     const RewriteForm& form = {});

/// The same of a reply of the backend. Of one that says nothing it is "".
[[nodiscard]] QString rewriteOf(const AIAnalysis& analysis, const QString& original,
                                QStringView ask);

} // namespace vorq
