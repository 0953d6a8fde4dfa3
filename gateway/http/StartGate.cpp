#include "http/StartGate.h"

#include <utility>

namespace vorq::gateway {

StartGate::Visitor::Visitor(StartGate& gate, std::function<void()> call)
    : gate_(gate), call_(std::move(call)) {
    if (gate_.inside_ < gate_.mostInside_) {
        ++gate_.inside_;
        isInside_ = true;
    } else {
        turn_ = gate_.line_.insert(gate_.line_.end(), this);
    }
}

StartGate::Visitor::~Visitor() {
    if (isInside_) {
        --gate_.inside_;
        gate_.admitNext();
    } else {
        gate_.line_.erase(turn_);
    }
}

void StartGate::admitNext() {
    if (line_.empty()) return;
    Visitor& next = *line_.front();
    line_.pop_front();
    ++inside_;
    next.isInside_ = true;
    next.call_();
}

} // namespace vorq::gateway
