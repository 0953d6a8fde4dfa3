#include "platform/linux/documents/GuardedFailure.h"

namespace vorq {

std::optional<DocumentFailure> failureOf(GuardedOutput::End end) {
    switch (end) {
    case GuardedOutput::End::Exited:
        return std::nullopt;
    case GuardedOutput::End::TimedOut:
        return DocumentFailure::TimedOut;
    case GuardedOutput::End::Stopped:
        return DocumentFailure::Stopped;
    case GuardedOutput::End::NotStarted:
        return DocumentFailure::NoTool;
    case GuardedOutput::End::Crashed:
    case GuardedOutput::End::Flooded:
        break;
    }
    return DocumentFailure::Unreadable;
}

} // namespace vorq
