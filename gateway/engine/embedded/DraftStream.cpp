#include "engine/embedded/DraftStream.h"

#include <utility>

namespace vorq::gateway {

DraftStream::DraftStream(ReplyDraft draft, std::chrono::milliseconds delay)
    : draft_(std::move(draft)), delay_(delay) {}

ReplyStep DraftStream::step(SteadyTime now) {
    if (shown_ == draft_.pieces.size()) return {};
    if (now < due_) return {.kind = ReplyStep::Kind::Waits, .again = due_};
    soFar_ += draft_.pieces[shown_++];
    due_ = now + delay_;
    return {.kind = ReplyStep::Kind::Grew, .text = soFar_};
}

FinishedReply DraftStream::result() {
    return Analysis{.summary = draft_.text(),
                    .feedback = {},
                    .corrections = {},
                    .sources = {},
                    .followUp = draft_.followUp};
}

} // namespace vorq::gateway
