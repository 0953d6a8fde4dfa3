#include "library/records/HubAreaJson.h"

namespace vorq {

QString rawString(HubArea area) {
    return rawStrings<HubArea>.nameOf(area);
}

std::optional<HubArea> hubAreaNamed(QStringView raw) {
    return rawStrings<HubArea>.caseOf(raw);
}

} // namespace vorq
