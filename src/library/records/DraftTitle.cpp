#include "library/records/DraftTitle.h"

#include "rendering/AssistantReplyDocument.h"
#include "support/text/Graphemes.h"
#include "support/text/Text.h"

using namespace Qt::StringLiterals;

namespace vorq {

QString draftTitle(QStringView text) {
    constexpr qsizetype longest = 80;
    const QString line = AssistantReplyDocument::inlinePlain(firstLine(trimmed(text)));
    const QStringView title = graphemePrefix(trimmed(line), longest);
    return title.isEmpty() ? u"Vorq"_s : title.toString();
}

} // namespace vorq
