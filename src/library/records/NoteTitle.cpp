#include "library/records/NoteTitle.h"

#include "support/text/Characters.h"

namespace vorq {

constexpr QChar bullet = u'•';

QStringView withoutLeadingBullets(QStringView text) {
    if (firstCharacter(text) != bullet) return text;
    while (!text.isEmpty()) {
        const QStringView character = firstCharacter(text);
        if (character != bullet && !isWhitespaceCharacter(character)) break;
        text = text.sliced(character.size());
    }
    return text;
}

QString shortened(QStringView text, qsizetype longest) {
    if (!graphemeCountAtLeast(text, longest + 1)) return text.toString();
    return graphemePrefix(text, longest).toString() + u'…';
}

} // namespace vorq
