#include "writing/words/AccessibleWordLooker.h"

#include "capture/placement/SelectionPlacement.h"
#include "capture/selection/SelectionBounds.h"
#include "capture/selection/SelectionReader.h"
#include "capture/source/CaptureGate.h"
#include "platform/Screens.h"
#include "writing/words/SelectionWords.h"

#include <cmath>
#include <memory>

namespace vorq {
namespace {

constexpr double lowestWord = 4; // points
constexpr double highestWord = 160;
// A word that goes on on the next line is higher than its first character.
constexpr double mostLines = 1.6;
// What toolkits round away.
constexpr double slack = 2;

bool holds(const AccessibleElement& element, const WordsSought& sought) {
    const auto value = element.value();
    return value && sliceOf(*value, sought.selected) == sought.selection;
}

// Passwords are never looked at.
AccessibleElementPtr elementOfWords(const CaptureSource& from, const WordsSought& sought) {
    AccessibleElementPtr element = from.accessibility.focusedElement(from.process, from.stop);
    if (element && element->isPasswordField().value_or(false)) return nullptr;
    if (element && holds(*element, sought)) return element;
    element = selectionOwningElement(from);
    return element && holds(*element, sought) ? element : nullptr;
}

// Nothing for what can be no word.
std::optional<QRectF> boundsOfWord(TextRange range, const AccessibleElement& element) {
    std::optional<QRectF> frame = element.boundsForRange(range);
    if (!frame || !std::isfinite(frame->x()) || !std::isfinite(frame->y())) return std::nullopt;
    const bool isWide = std::isfinite(frame->width()) && frame->width() >= 1;
    const bool isHigh = frame->height() >= lowestWord && frame->height() <= highestWord;
    return isWide && isHigh ? frame : std::nullopt;
}

} // namespace

WordLooker::Frames framesOfWords(const CaptureSource& from, const WordsSought& sought) {
    WordLooker::Frames frames(sought.words.size());
    const AccessibleElementPtr element = elementOfWords(from, sought);
    const auto elementFrame = element ? elementAXFrame(*element) : std::nullopt;
    if (!elementFrame) return frames;
    QRectF room = *elementFrame;
    if (const auto window = focusedWindowAXFrame(from)) room &= *window;
    if (room.isEmpty()) return frames;
    room.adjust(-slack, -slack, slack, slack);
    for (std::size_t at = 0; at < frames.size() && !from.stop.stop_requested(); ++at) {
        TextRange word = sought.words[at];
        word.location += sought.selected.location;
        const auto frame = boundsOfWord(word, *element);
        if (!frame || !room.contains(*frame)) continue;
        const auto first = boundsOfWord({.location = word.location, .length = 1}, *element);
        if (first && frame->height() <= mostLines * first->height()) frames[at] = frame;
    }
    return frames;
}

QCoro::Task<std::optional<WordLooker::Frames>> AccessibleWordLooker::look(WordsSought sought,
                                                                          std::stop_token stop) {
    std::optional<Frames> result;
    const Services services = m_services;
    if (!sought.source || !services.gate.admits(sought.source)) co_return result;
    const auto found = std::make_shared<Frames>();
    const SelectionReader::Ask ask = [found, sought](const CaptureSource& from, SelectionReading&) {
        *found = framesOfWords(from, sought);
    };
    const SelectionReading reading =
        co_await services.reader.readInBackground(sought.source, ask, readLimit, stop);
    // Until it has come to its end, it still belongs to the other thread.
    if (stop.stop_requested() || reading.isUnanswered) co_return result;
    const ScreenLayout layout = screenLayout(services.screens);
    Frames frames = *found;
    for (auto& frame : frames)
        if (frame) frame = cocoaRect(*frame, layout);
    result = std::move(frames);
    co_return result;
}

} // namespace vorq
