#include "library/records/StudySource.h"

#include "support/text/Text.h"

namespace vorq {

QString studySource(QStringView text, QStringView thoughts) {
    const QStringView body = trimmed(thoughts);
    return (body.isEmpty() ? trimmed(text) : body).toString();
}

} // namespace vorq
