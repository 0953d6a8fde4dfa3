#include "panel/PanelRequests.h"

#include "support/text/Graphemes.h"
#include "support/text/Text.h"

#include <algorithm>
#include <array>
#include <ranges>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

constexpr std::size_t promptHistory = 10;
constexpr std::size_t deepenHistory = 8;
constexpr qsizetype minimumExcerpt = 2;
constexpr qsizetype excerptLabelLimit = 120;
constexpr qsizetype excerptLabelCut = 117;

const QString blankLine = u"\n\n"_s;

bool asksForDeepResearch(const QList<PromptAttachment>& attachments) {
    return std::ranges::any_of(attachments, [](const PromptAttachment& attachment) {
        return !attachment.isDeepenSelection &&
               (attachment.textContent ||
                PromptAttachment::isDocumentExtension(pathExtension(attachment.fileName)));
    });
}

QString outgoingPrompt(const QString& prompt, bool deepResearch, bool isStudyingNote) {
    if (deepResearch && prompt.isEmpty())
        return u"Deep research this attached study material.\n"
               "Extract the core ideas, surface related well-known studies or "
               "frameworks, and bridge connections between concepts so I can learn "
               "the bigger picture."_s;
    if (deepResearch)
        return u"Deep research mode on the attached files.\n"
               "Find related studies/frameworks, bridge connections, and go beyond "
               "a surface summary.\nStudent request: "_s +
               prompt;
    if (prompt.isEmpty())
        return u"Please review the attached materials as study context and help me "
               "understand them."_s;
    if (isStudyingNote)
        return u"The student is studying a saved note. Use the note / attachments "
               "as context.\nStudent request: "_s +
               prompt;
    return prompt;
}

// The pieces trimmed, the empty and the repeated ones dropped, a blank line between them.
QString selectedText(const std::array<QString, 3>& pieces) {
    QStringList kept;
    for (const QString& piece : pieces) {
        const QString text = trimmed(piece).toString();
        if (!text.isEmpty() && !kept.contains(text)) kept += text;
    }
    return kept.join(blankLine);
}

QString firstImage(const QList<PromptAttachment>& attachments) {
    for (const PromptAttachment& attachment : attachments)
        if (attachment.imageDataURL) return *attachment.imageDataURL;
    return {};
}

PromptRequest streamedRequest() {
    PromptRequest request;
    request.stream = true;
    return request;
}

} // namespace

PanelRequest panelPromptRequest(const PanelPromptContext& context) {
    PanelRequest request;
    request.body = streamedRequest();
    request.body.selectedText =
        selectedText({context.studySource.value_or(QString()), context.highlightedText,
                      attachmentText(context.attachments)});
    request.body.recentMessages = recentMessages(context.messages, promptHistory);
    request.body.screenDataUrl = firstImage(context.attachments);
    request.body.deepResearch = asksForDeepResearch(context.attachments);
    request.body.prompt =
        outgoingPrompt(context.prompt, request.body.deepResearch, context.isStudyingNote);
    request.isStudyTurn = request.body.deepResearch || context.isStudyingNote;
    return request;
}

PanelRequest panelDeepenRequest(const QString& excerpt, const QString& userPrompt,
                                std::span<const VorqMessage> messages) {
    const QString opening =
        u"Go deeper on this excerpt from your previous reply — explain it more fully, add useful "
        "context, and call out what matters next. "_s;
    const QString form =
        u"Structure the reply however best fits the material (prose, bullets, or sections). Real "
        "newlines. Never one long paragraph."_s;
    PanelRequest request;
    request.body = streamedRequest();
    request.body.prompt = userPrompt.isEmpty() ? opening + form
                                               : opening + u"Also address this request: "_s +
                                                     userPrompt + u'\n' + form;
    request.body.selectedText = excerpt;
    request.body.recentMessages = recentMessages(messages, deepenHistory);
    return request;
}

std::optional<QString> submitBubble(QStringView prompt,
                                    const QList<PromptAttachment>& attachments) {
    const QString text = trimmed(prompt).toString();
    if (attachments.isEmpty()) return text.isEmpty() ? std::nullopt : std::optional(text);
    const QString names = composerDisplayNames(attachments).join(u", "_s);
    if (text.isEmpty()) return u"Attached: "_s + names;
    return text + blankLine + u"📎 "_s + names;
}

std::optional<QString> deepenBubble(QStringView excerpt, QStringView userPrompt) {
    const QStringView kept = trimmed(excerpt);
    if (graphemeCount(kept) < minimumExcerpt) return std::nullopt;
    const QStringView request = trimmed(userPrompt);
    if (!request.isEmpty()) return request.toString();
    const QString label = graphemeCount(kept) > excerptLabelLimit
                              ? graphemePrefix(kept, excerptLabelCut).toString() + u'…'
                              : kept.toString();
    return u"deepen — \""_s + label + u'"';
}

std::vector<RecentMessage> recentMessages(std::span<const VorqMessage> messages,
                                          std::size_t limit) {
    std::vector<RecentMessage> kept;
    for (const VorqMessage& message : messages | std::views::reverse) {
        if (kept.size() == limit) break;
        if (!message.isWorking) kept.push_back({rawString(message.role), message.text});
    }
    std::ranges::reverse(kept);
    return kept;
}

} // namespace vorq
