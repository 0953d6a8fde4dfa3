#include "library/records/HubAreaJson.h"

namespace vorq {

QString rawString(HubArea area) {
    return rawStringOf(area);
}

std::optional<HubArea> hubAreaNamed(QStringView raw) {
    return caseOf<HubArea>(raw.toLatin1());
}

} // namespace vorq
