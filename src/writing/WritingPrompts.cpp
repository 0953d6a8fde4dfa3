#include "writing/WritingPrompts.h"

#include "support/text/Text.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

const QString answerForm = u"Put the replacement text alone in summary. No preamble, no quotes, no "
                           "commentary. corrections \"\"."_s;

} // namespace

QString promptForUserInstruction(const QString& ask, const QString& current,
                                 const QString& session) {
    QStringList lines{
        u"Writing tools — writer rewrite pass."_s,
        u"You help writers rewrite, correct, and improve wording of the selected text."_s,
        u"Follow the writer's direction below. Keep the same meaning and voice unless they ask "
        "otherwise."_s,
        u"Writer ask: "_s + ask,
    };
    if (const QStringView shown = trimmed(current); !shown.isEmpty()) {
        lines += u"Version the writer is looking at — apply the direction to this one:"_s;
        lines += shown.toString();
    }
    if (!session.isEmpty()) lines += session;
    lines += u"Return ONE drop-in replacement for the selection only (ready to paste over it)."_s;
    lines += u"Fix grammar/spelling when needed. Prefer clearer, stronger wording."_s;
    lines += answerForm;
    return lines.join(u'\n');
}

QString promptForAnotherTake(const std::optional<QString>& lastInstruction,
                             const QStringList& avoiding, const QString& session) {
    QStringList lines{
        u"Writing tools — the writer rejected your version and wants a different one."_s,
        u"Rewrite the ORIGINAL selection again. Same meaning, same language, similar length."_s,
        u"Make it clearly different from every version below — new sentence shape and word choice, "
        "not a synonym swap."_s,
    };
    if (lastInstruction && !lastInstruction->isEmpty())
        lines += u"Still honor the writer's earlier direction: "_s + *lastInstruction;
    if (!avoiding.isEmpty())
        lines += u"Already shown and rejected — do not repeat or lightly reword these:"_s;
    for (qsizetype i = 0; i < avoiding.size(); ++i)
        lines += QString::number(i + 1) + u". "_s + avoiding[i];
    if (!session.isEmpty()) lines += session;
    lines += answerForm;
    return lines.join(u'\n');
}

} // namespace vorq
