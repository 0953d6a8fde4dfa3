#include "writing/words/WordAltsPrompt.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace vorq {

QString promptForWordAlternatives(qsizetype most) {
    const QStringList lines{
        u"Writing tools — word alternatives."_s,
        u"Pick single words of the selected text that a better word would improve, the most useful "
        "first, %1 at most."_s.arg(most),
        u"For each give one single-word alternative that fits its place in grammar, inflection, "
        "meaning and voice, so that nothing else in the text has to change, articles included."_s,
        u"Leave out names, numbers, quotations, code and words that are fine as they are. Keep the "
        "language of the text."_s,
        u"Put into summary a JSON list and nothing else, in this form: [{\"word\": \"as it stands "
        "in the text\", \"occurrence\": 1, \"alternative\": \"the other word\"}]. occurrence "
        "counts from 1 where a word stands in the text more than once."_s,
        u"If no word can be improved, put [] into summary. corrections \"\"."_s,
    };
    return lines.join(u'\n');
}

} // namespace vorq
