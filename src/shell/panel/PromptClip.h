#pragma once

#include "capture/attachments/PromptAttachment.h"

#include <cstdint>

namespace vorq {

/// What stands for an attachment in the composer, from the moment in which it was chosen.
struct PromptClip {
    enum class State : std::uint8_t {
        Loading, ///< of the attachment little more than its name is known
        Ready,
        Failed, ///< there is none, until it is tried again
    };

    PromptAttachment attachment;
    State state = State::Ready;
    QString title;  ///< among the other clips
    QString reason; ///< why it failed, as a sentence

    bool operator==(const PromptClip&) const = default;
};

} // namespace vorq
