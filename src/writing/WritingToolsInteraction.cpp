#include "writing/WritingToolsInteraction.h"

#include "support/text/Graphemes.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr qsizetype longestSelection = 120;
constexpr qsizetype selectionCut = 117;

QString shortened(const QString& selection) {
    if (!graphemeCountAtLeast(selection, longestSelection + 1)) return selection;
    return graphemePrefix(selection, selectionCut).toString() + u'…';
}

QString wordsOf(const WritingToolsInteraction::Kind& kind) {
    using Event = WritingToolsInteraction::Kind::Event;
    switch (kind.event) {
    case Event::Asked:
        return u"writer asked: "_s + kind.text;
    case Event::SelectionTextChanged:
        return u"selection text changed to: "_s + shortened(kind.text);
    case Event::Opened:
        return u"opened Writing Tools on the highlighted selection"_s;
    case Event::RejectedTake:
        return u"writer rejected the on-screen take (asked for another)"_s;
    case Event::AcceptedReplace:
        return u"writer accepted and replaced the highlight"_s;
    case Event::HighlightMoved:
        return u"highlight moved on screen (writer scrolled or re-selected)"_s;
    }
    return {};
}

} // namespace

QString WritingToolsInteraction::promptLine() const {
    return u'[' + at.toLocalTime().toString(u"HH:mm:ss"_s) + u"] "_s + wordsOf(kind);
}

} // namespace vorq
