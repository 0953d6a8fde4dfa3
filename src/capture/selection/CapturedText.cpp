#include "capture/selection/CapturedText.h"

#include "capture/selection/SecretText.h"

namespace vorq {

CapturedText CapturedText::none(CaptureMiss miss) {
    CapturedText captured;
    captured.miss = miss;
    return captured;
}

CapturedText CapturedText::told(const QString& text) {
    CapturedText captured(text);
    captured.isHeldBack = looksMasked(text);
    return captured;
}

CapturedText CapturedText::found(const QString& text) {
    CapturedText captured(text);
    captured.isHeldBack = looksLikeSecret(text);
    return captured;
}

} // namespace vorq
