#include "library/StudySource.h"

#include "support/Text.h"

namespace vorq {

QString studySource(QStringView text, QStringView thoughts) {
    const QStringView body = trimmed(thoughts);
    return (body.isEmpty() ? trimmed(text) : body).toString();
}

} // namespace vorq
